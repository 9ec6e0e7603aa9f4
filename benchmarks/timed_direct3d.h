#pragma once

#include "module/video_card/direct3d/direct3d_api.h"
#include "timing.h"

#include <array>
#include <vector>

namespace vexil::benchmarks {

/// The steps of one surface, in their order.
enum class SurfaceStep { image, upload, draw, readBack, comparison, count };

/// When the steps of the surfaces began and ended, as seen at the calls that divide them.
class SurfaceTimes {
public:
    using Steps = std::array<double, static_cast<std::size_t>(SurfaceStep::count)>;

    /// The step that ends now; the next one begins.
    void end(SurfaceStep step);
    /// The first step of a surface begins now.
    void begin() { last_ = Clock::now(); }

    /// Of each step the quantile over all surfaces, in milliseconds.
    [[nodiscard]] Steps quantiles(double part) const;
    /// Of each surface, all its steps in milliseconds.
    [[nodiscard]] std::vector<double> totals() const;

private:
    Clock::time_point last_;
    Steps current_{};
    std::vector<Steps> surfaces_;
};

/// Where the calls of the devices that are made from now on are timed; null ends it.
void timeDirect3D(SurfaceTimes* times);

} // namespace vexil::benchmarks
