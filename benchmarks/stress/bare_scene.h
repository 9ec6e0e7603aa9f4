#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/quad_objects.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexil::benchmarks {

/// The draws of the stress test's frame and nothing else: the scene into two textures and their comparison
/// into a third.
class BareScene {
public:
    /// Throws `std::runtime_error`.
    BareScene(const module::video_card::Dx11Context& dx11, std::uint32_t width, std::uint32_t height);

    /// Returns when the card has got the work, not when it is done.
    void drawFrame(float seconds);
    void drawScene(float seconds);
    /// Waits for the card. The last scene's pixels, blue first, row by row without gaps.
    [[nodiscard]] std::vector<std::byte> picture();

private:
    struct Target {
        module::video_card::ComShared<ID3D11Texture2D> texture;
        module::video_card::ComShared<ID3D11RenderTargetView> view;
        module::video_card::ComShared<ID3D11ShaderResourceView> resourceView;
    };

    void bindConstants(float seconds);
    void draw(const Target& target, const module::video_card::RenderObject& object);

    module::video_card::Dx11Context dx11_;
    std::uint32_t width_;
    std::uint32_t height_;
    module::video_card::RenderObject scene_;
    module::video_card::RenderObject compare_;
    std::array<Target, 3> targets_;
    module::video_card::ComShared<ID3D11Texture2D> staging_;
    module::video_card::ComShared<ID3D11Buffer> matrices_;
    module::video_card::ComShared<ID3D11Buffer> resolution_;
};

} // namespace vexil::benchmarks
