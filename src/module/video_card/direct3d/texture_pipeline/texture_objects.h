#pragma once

#include "module/video_card/direct3d/com_shared.h"
#include "module/video_card/direct3d/texture_pipeline/pattern_image.h"

#include <d3d11.h>

#include <span>

// The textures of one pass. Each pass makes its own: the churn is part of what the driver is tested with.
namespace vexil::module::video_card {

/// What the picture is drawn to.
struct TextureRenderTarget {
    ComShared<ID3D11Texture2D> texture;
    ComShared<ID3D11RenderTargetView> renderTargetView;
    ComShared<ID3D11ShaderResourceView> shaderResourceView;
};

/// What the pixel shader samples.
struct SampledTexture {
    ComShared<ID3D11Texture2D> texture;
    ComShared<ID3D11ShaderResourceView> shaderResourceView;
    ComShared<ID3D11SamplerState> sampler;
};

// The first failure ends each of them and is returned. `pixels` has the extent of a pattern.

[[nodiscard]] HRESULT createRenderTarget(ID3D11Device& device, std::span<const std::uint32_t> pixels,
                                         TextureRenderTarget& target);

/// A copy of the target that the processor can read.
[[nodiscard]] HRESULT createStagingCopy(ID3D11Device& device, const TextureRenderTarget& target,
                                        ComShared<ID3D11Texture2D>& staging);

/// E_INVALIDARG for an image that is not of the target's extent.
[[nodiscard]] HRESULT createSampledTexture(ID3D11Device& device, const TextureRenderTarget& target,
                                           std::span<const std::uint32_t> image, SampledTexture& sampled);

} // namespace vexil::module::video_card
