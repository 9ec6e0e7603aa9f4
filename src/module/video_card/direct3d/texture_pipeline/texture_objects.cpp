#include "module/video_card/direct3d/texture_pipeline/texture_objects.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/resource_creation.h"

namespace vexil::module::video_card {

namespace {

constexpr UINT pixelBytes = sizeof(std::uint32_t);

/// Point sampling, so that a pixel is one texel and nothing of its neighbours.
HRESULT createSampler(ID3D11Device& device, ComShared<ID3D11SamplerState>& sampler) {
    D3D11_SAMPLER_DESC description{};
    description.Filter = D3D11_FILTER_MIN_MAG_MIP_POINT;
    description.AddressU = D3D11_TEXTURE_ADDRESS_CLAMP;
    description.AddressV = D3D11_TEXTURE_ADDRESS_CLAMP;
    description.AddressW = D3D11_TEXTURE_ADDRESS_CLAMP;
    description.ComparisonFunc = D3D11_COMPARISON_ALWAYS;
    description.MinLOD = -D3D11_FLOAT32_MAX;
    description.MaxLOD = D3D11_FLOAT32_MAX;
    return createCom(sampler, [&](auto out) { return device.CreateSamplerState(&description, out); });
}

} // namespace

HRESULT createRenderTarget(ID3D11Device& device, std::span<const std::uint32_t> pixels,
                           TextureRenderTarget& target) {
    static constexpr auto description = plainTexture(patternExtent, patternExtent, DXGI_FORMAT_R8G8B8A8_UNORM,
                                                     D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE);
    const D3D11_SUBRESOURCE_DATA content{pixels.data(), description.Width * pixelBytes, 0};
    HRESULT result = createTexture(device, description, &content, target.texture);
    if (FAILED(result)) {
        return result;
    }
    result = createTargetView(device, *target.texture, target.renderTargetView);
    return FAILED(result) ? result
                          : createResourceView(device, *target.texture, description.MipLevels,
                                               target.shaderResourceView);
}

HRESULT createStagingCopy(ID3D11Device& device, const TextureRenderTarget& target,
                          ComShared<ID3D11Texture2D>& staging) {
    return createTexture(device, stagingDescription(*target.texture), nullptr, staging);
}

HRESULT createSampledTexture(ID3D11Device& device, const TextureRenderTarget& target,
                             std::span<const std::uint32_t> image, SampledTexture& sampled) {
    auto description = descriptionOf(*target.texture);
    if (image.size() != std::size_t{description.Width} * description.Height) {
        return E_INVALIDARG;
    }
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_IMMUTABLE;
    description.BindFlags = D3D11_BIND_SHADER_RESOURCE;
    description.CPUAccessFlags = 0;
    const D3D11_SUBRESOURCE_DATA content{image.data(), description.Width * pixelBytes, 0};
    HRESULT result = createTexture(device, description, &content, sampled.texture);
    if (SUCCEEDED(result)) {
        result = createResourceView(device, *sampled.texture, descriptionOf(*sampled.texture).MipLevels,
                                    sampled.shaderResourceView);
    }
    return FAILED(result) ? result : createSampler(device, sampled.sampler);
}

} // namespace vexil::module::video_card
