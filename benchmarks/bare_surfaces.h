#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/direct3d/surface_list.h"
#include "module/video_card/direct3d/surface_render_pipeline.h"

#include <cstdint>
#include <vector>

namespace vexil::benchmarks {

/// What a run of the video memory test does to the card and nothing else: upload, draw, resolve, copy, map
/// and copy out, with one image for all surfaces and with the temporary and the staging texture made once.
class BareSurfaces {
public:
    /// Throws `std::runtime_error` if an object cannot be made.
    BareSurfaces(const module::video_card::Dx11Context& dx11, std::uint32_t count);

    /// The time of each surface in milliseconds.
    [[nodiscard]] std::vector<double> run();

private:
    void runOne(const module::video_card::VideoSurface& surface);

    module::video_card::Dx11Context dx11_;
    module::video_card::SurfaceRenderPipeline pipeline_;
    std::vector<module::video_card::VideoSurface> surfaces_;
    module::video_card::ComShared<ID3D11Texture2D> temporary_;
    module::video_card::ComShared<ID3D11Texture2D> staging_;
    std::vector<std::uint8_t> image_;
    std::vector<std::uint8_t> copy_;
};

} // namespace vexil::benchmarks
