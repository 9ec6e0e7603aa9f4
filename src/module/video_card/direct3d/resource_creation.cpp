#include "module/video_card/direct3d/resource_creation.h"

#include "module/video_card/direct3d/com_create.h"

namespace vexil::module::video_card {

D3D11_TEXTURE2D_DESC descriptionOf(ID3D11Texture2D& texture) {
    D3D11_TEXTURE2D_DESC description{};
    texture.GetDesc(&description);
    return description;
}

D3D11_TEXTURE2D_DESC stagingDescription(ID3D11Texture2D& original) {
    auto description = descriptionOf(original);
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_STAGING;
    description.BindFlags = 0;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    return description;
}

HRESULT createTexture(ID3D11Device& device, const D3D11_TEXTURE2D_DESC& description,
                      const D3D11_SUBRESOURCE_DATA* content, ComShared<ID3D11Texture2D>& texture) {
    return createCom(texture, [&](auto out) { return device.CreateTexture2D(&description, content, out); });
}

HRESULT createTargetView(ID3D11Device& device, ID3D11Texture2D& texture,
                         ComShared<ID3D11RenderTargetView>& view) {
    D3D11_RENDER_TARGET_VIEW_DESC description{};
    description.Format = descriptionOf(texture).Format;
    description.ViewDimension = D3D11_RTV_DIMENSION_TEXTURE2D;
    return createCom(view,
                     [&](auto out) { return device.CreateRenderTargetView(&texture, &description, out); });
}

HRESULT createResourceView(ID3D11Device& device, ID3D11Texture2D& texture, UINT mipLevels,
                           ComShared<ID3D11ShaderResourceView>& view) {
    D3D11_SHADER_RESOURCE_VIEW_DESC description{};
    description.Format = descriptionOf(texture).Format;
    description.ViewDimension = D3D11_SRV_DIMENSION_TEXTURE2D;
    description.Texture2D.MipLevels = mipLevels;
    return createCom(view,
                     [&](auto out) { return device.CreateShaderResourceView(&texture, &description, out); });
}

HRESULT createGeometryBuffer(ID3D11Device& device, std::span<const std::byte> content, UINT bindFlags,
                             ComShared<ID3D11Buffer>& buffer) {
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = static_cast<UINT>(content.size());
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = bindFlags;
    const D3D11_SUBRESOURCE_DATA data{content.data(), 0, 0};
    return createCom(buffer, [&](auto out) { return device.CreateBuffer(&description, &data, out); });
}

HRESULT createShaderPair(ID3D11Device& device, std::span<const std::byte> vertexCode,
                         std::span<const std::byte> pixelCode, ComShared<ID3D11VertexShader>& vertexShader,
                         ComShared<ID3D11PixelShader>& pixelShader) {
    const HRESULT result = createCom(vertexShader, [&](auto out) {
        return device.CreateVertexShader(vertexCode.data(), vertexCode.size(), nullptr, out);
    });
    return FAILED(result) ? result : createCom(pixelShader, [&](auto out) {
        return device.CreatePixelShader(pixelCode.data(), pixelCode.size(), nullptr, out);
    });
}

HRESULT createInputLayout(ID3D11Device& device, std::span<const D3D11_INPUT_ELEMENT_DESC> elements,
                          std::span<const std::byte> vertexCode, ComShared<ID3D11InputLayout>& inputLayout) {
    return createCom(inputLayout, [&](auto out) {
        return device.CreateInputLayout(elements.data(), static_cast<UINT>(elements.size()),
                                        vertexCode.data(), vertexCode.size(), out);
    });
}

} // namespace vexil::module::video_card
