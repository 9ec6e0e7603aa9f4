#include "module/video_card/direct3d/texture_pipeline/texture_pass.h"

#include "module/video_card/direct3d/mapped_subresource.h"

namespace vexil::module::video_card {

bool TexturePass::create(std::span<const std::uint32_t> blank, std::span<const std::uint32_t> image) {
    auto& device = *dx11_.device;
    return SUCCEEDED(createRenderTarget(device, blank, target_)) &&
           SUCCEEDED(createStagingCopy(device, target_, staging_)) &&
           SUCCEEDED(createSampledTexture(device, target_, image, sampled_));
}

void TexturePass::draw() const {
    static constexpr float opaqueBlack[] = {0, 0, 0, 1};
    auto& context = *dx11_.context;
    auto* const target = target_.renderTargetView.get();
    auto* const source = sampled_.shaderResourceView.get();
    auto* const sampler = sampled_.sampler.get();

    quad_.bindShaders(context);
    context.OMSetRenderTargets(1, &target, nullptr);
    context.PSSetShaderResources(0, 1, &source);
    context.PSSetSamplers(0, 1, &sampler);
    context.ClearRenderTargetView(target, opaqueBlack);
    quad_.draw(context);
    context.Flush();
    context.CopyResource(staging_.get(), target_.texture.get());
}

bool TexturePass::readBack(PatternImage& picture) const {
    const auto mapped = mapSubresource(dx11_.context, staging_, 0, D3D11_MAP_READ);
    if (mapped->pData == nullptr) {
        return false;
    }
    const auto* const words = static_cast<const std::uint32_t*>(mapped->pData);
    picture.reserve(patternPixels);
    picture.assign(words, words + patternPixels);
    return true;
}

} // namespace vexil::module::video_card
