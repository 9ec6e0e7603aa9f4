#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

#include <cstddef>
#include <cstdint>
#include <span>

// What the tests and the renderers make of the same kind. Each `create` function returns the result of the
// first call that fails, and leaves its output of that call as it was.
namespace vexil::module::video_card {

/// One slice with one mip and one sample, of default usage.
[[nodiscard]] constexpr D3D11_TEXTURE2D_DESC plainTexture(std::uint32_t width, std::uint32_t height,
                                                          DXGI_FORMAT format, UINT bindFlags) {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = width;
    description.Height = height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = format;
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = bindFlags;
    return description;
}
[[nodiscard]] D3D11_TEXTURE2D_DESC descriptionOf(ID3D11Texture2D& texture);
/// Of a texture that the processor reads a copy of `original` in.
[[nodiscard]] D3D11_TEXTURE2D_DESC stagingDescription(ID3D11Texture2D& original);

[[nodiscard]] HRESULT createTexture(ID3D11Device& device, const D3D11_TEXTURE2D_DESC& description,
                                    const D3D11_SUBRESOURCE_DATA* content,
                                    ComShared<ID3D11Texture2D>& texture);
/// Of the first mip of a plain texture.
[[nodiscard]] HRESULT createTargetView(ID3D11Device& device, ID3D11Texture2D& texture,
                                       ComShared<ID3D11RenderTargetView>& view);
[[nodiscard]] HRESULT createResourceView(ID3D11Device& device, ID3D11Texture2D& texture, UINT mipLevels,
                                         ComShared<ID3D11ShaderResourceView>& view);
/// A buffer of default usage.
[[nodiscard]] HRESULT createGeometryBuffer(ID3D11Device& device, std::span<const std::byte> content,
                                           UINT bindFlags, ComShared<ID3D11Buffer>& buffer);

/// The vertex shader first.
[[nodiscard]] HRESULT createShaderPair(ID3D11Device& device, std::span<const std::byte> vertexCode,
                                       std::span<const std::byte> pixelCode,
                                       ComShared<ID3D11VertexShader>& vertexShader,
                                       ComShared<ID3D11PixelShader>& pixelShader);
[[nodiscard]] HRESULT createInputLayout(ID3D11Device& device,
                                        std::span<const D3D11_INPUT_ELEMENT_DESC> elements,
                                        std::span<const std::byte> vertexCode,
                                        ComShared<ID3D11InputLayout>& inputLayout);

} // namespace vexil::module::video_card
