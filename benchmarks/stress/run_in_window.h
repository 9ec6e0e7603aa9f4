#pragma once

#include "module/video_card/direct3d/dx11_context.h"

#include <cstdint>
#include <functional>
#include <string>

namespace vexil::benchmarks {

struct WindowFrames {
    std::uint64_t frames = 0; ///< behind the first few, in which the card's queue fills
    double seconds = 0;       ///< that they took

    [[nodiscard]] double rate() const { return static_cast<double>(frames) / seconds; }
};

/// Runs the stress test's window as a test does: its dialog with both timers, overlay, samples and the
/// comparison at the end. On the GUI thread. `size` is a value of WINDOW_SIZE; `eachTenSeconds` is called
/// with the seconds since the start. Throws `std::exception` if the window cannot be built or the pictures
/// differed.
[[nodiscard]] WindowFrames runInWindow(const module::video_card::Dx11Context& dx11, std::uint64_t seconds,
                                       const std::string& size,
                                       const std::function<void(double)>& eachTenSeconds = {});

} // namespace vexil::benchmarks
