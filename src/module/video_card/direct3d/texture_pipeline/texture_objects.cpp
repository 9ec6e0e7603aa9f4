#include "module/video_card/direct3d/texture_pipeline/texture_objects.h"

#include "module/video_card/direct3d/com_create.h"

namespace vexil::module::video_card {

namespace {

constexpr UINT pixelBytes = sizeof(std::uint32_t);

HRESULT createTexture(ID3D11Device& device, const D3D11_TEXTURE2D_DESC& description,
                      const D3D11_SUBRESOURCE_DATA* content, ComShared<ID3D11Texture2D>& texture) {
    return createCom(texture, [&](auto out) { return device.CreateTexture2D(&description, content, out); });
}

constexpr D3D11_TEXTURE2D_DESC targetDescription() {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = patternExtent;
    description.Height = patternExtent;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = DXGI_FORMAT_R8G8B8A8_UNORM;
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE;
    return description;
}

D3D11_TEXTURE2D_DESC descriptionOf(ID3D11Texture2D& texture) {
    D3D11_TEXTURE2D_DESC description{};
    texture.GetDesc(&description);
    return description;
}

HRESULT createResourceView(ID3D11Device& device, ID3D11Texture2D& texture,
                           const D3D11_TEXTURE2D_DESC& description,
                           ComShared<ID3D11ShaderResourceView>& view) {
    D3D11_SHADER_RESOURCE_VIEW_DESC viewDescription{};
    viewDescription.Format = description.Format;
    viewDescription.ViewDimension = D3D11_SRV_DIMENSION_TEXTURE2D;
    viewDescription.Texture2D.MipLevels = description.MipLevels;
    return createCom(
        view, [&](auto out) { return device.CreateShaderResourceView(&texture, &viewDescription, out); });
}

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
    static constexpr auto description = targetDescription();
    const D3D11_SUBRESOURCE_DATA content{pixels.data(), description.Width * pixelBytes, 0};
    HRESULT result = createTexture(device, description, &content, target.texture);
    if (FAILED(result)) {
        return result;
    }
    D3D11_RENDER_TARGET_VIEW_DESC view{};
    view.Format = description.Format;
    view.ViewDimension = D3D11_RTV_DIMENSION_TEXTURE2D;
    result = createCom(target.renderTargetView, [&](auto out) {
        return device.CreateRenderTargetView(target.texture.get(), &view, out);
    });
    return FAILED(result)
               ? result
               : createResourceView(device, *target.texture, description, target.shaderResourceView);
}

HRESULT createStagingCopy(ID3D11Device& device, const TextureRenderTarget& target,
                          ComShared<ID3D11Texture2D>& staging) {
    auto description = descriptionOf(*target.texture);
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_STAGING;
    description.BindFlags = 0;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    return createTexture(device, description, nullptr, staging);
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
        result = createResourceView(device, *sampled.texture, descriptionOf(*sampled.texture),
                                    sampled.shaderResourceView);
    }
    return FAILED(result) ? result : createSampler(device, sampled.sampler);
}

} // namespace vexil::module::video_card
