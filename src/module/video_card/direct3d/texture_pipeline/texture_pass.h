#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/direct3d/texture_pipeline/pattern_image.h"
#include "module/video_card/direct3d/texture_pipeline/pattern_quad.h"
#include "module/video_card/direct3d/texture_pipeline/texture_objects.h"

#include <span>

namespace vexil::module::video_card {

/// One image on its way through the pipeline, step by step: `create`, `draw`, `readBack`. The object holds
/// what the pass made on the card.
class TexturePass {
public:
    /// The arguments outlive the pass.
    TexturePass(const Dx11Context& dx11, const PatternQuad& quad) : dx11_(dx11), quad_(quad) {}
    TexturePass(const TexturePass&) = delete;
    TexturePass& operator=(const TexturePass&) = delete;

    /// Makes the textures. `blank` is what the target holds at first. False if the card would not.
    [[nodiscard]] bool create(std::span<const std::uint32_t> blank, std::span<const std::uint32_t> image);

    /// Draws the image to the target and copies that for the processor. No call of it can tell of a failure.
    void draw() const;

    /// Waits for the card and copies the picture out. It is taken as one run of memory, whatever row pitch
    /// the card tells: one with gaps between its rows gives a wrong picture. False if it could not be mapped.
    [[nodiscard]] bool readBack(PatternImage& picture) const;

private:
    const Dx11Context& dx11_;
    const PatternQuad& quad_;
    TextureRenderTarget target_;
    ComShared<ID3D11Texture2D> staging_;
    SampledTexture sampled_;
};

} // namespace vexil::module::video_card
