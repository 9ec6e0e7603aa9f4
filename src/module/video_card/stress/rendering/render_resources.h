#pragma once

#include "module/video_card/direct3d/com_shared.h"
#include "module/video_card/stress/rendering/d3d11_renderer.h"
#include "module/video_card/stress/rendering/render_object.h"

#include <d3d11.h>

#include <cstddef>
#include <cstdint>
#include <span>

// What both renderers make of the same kind. Each function returns the result of the call, and leaves its
// output as it was on a failure.
namespace vexil::module::video_card {

inline constexpr UINT renderPixelBytes = 4;

/// Throws `std::runtime_error` with the text for a failure.
void orThrow(HRESULT result, const char* text);

[[nodiscard]] HRESULT createTexture(ID3D11Device& device, const D3D11_TEXTURE2D_DESC& description,
                                    const D3D11_SUBRESOURCE_DATA* content,
                                    ComShared<ID3D11Texture2D>& texture);
/// Of the first mip of a plain texture.
[[nodiscard]] HRESULT createTargetView(ID3D11Device& device, ID3D11Texture2D& texture,
                                       ComShared<ID3D11RenderTargetView>& view);
[[nodiscard]] HRESULT createResourceView(ID3D11Device& device, ID3D11Texture2D& texture, UINT mipLevels,
                                         ComShared<ID3D11ShaderResourceView>& view);
/// A dynamic constant buffer that starts with `content`.
[[nodiscard]] HRESULT createConstantBuffer(ID3D11Device& device, std::span<const std::byte> content,
                                           ComShared<ID3D11Buffer>& buffer);
/// A buffer of default usage.
[[nodiscard]] HRESULT createGeometryBuffer(ID3D11Device& device, std::span<const std::byte> content,
                                           UINT bindFlags, ComShared<ID3D11Buffer>& buffer);

/// Texture, state and view, in this order; the state is bound as soon as it is made. `texture` describes the
/// first of them.
struct DepthTarget {
    ComShared<ID3D11Texture2D>& texture;
    ComShared<ID3D11DepthStencilState>& state;
    ComShared<ID3D11DepthStencilView>& view;
};
[[nodiscard]] HRESULT createDepthTarget(ID3D11Device& device, ID3D11DeviceContext& context,
                                        const D3D11_TEXTURE2D_DESC& texture,
                                        const D3D11_DEPTH_STENCIL_DESC& state, const DepthTarget& target);
/// Culls back faces, and is bound as soon as it is made.
[[nodiscard]] HRESULT createRasterizer(ID3D11Device& device, ID3D11DeviceContext& context,
                                       D3D11_FILL_MODE fill, bool frontCounterClockwise,
                                       ComShared<ID3D11RasterizerState>& state);

/// Vertex shader, pixel shader and input layout of the object, in this order. 0x80070006 for a shader that
/// came back null.
[[nodiscard]] HRESULT createShaders(ID3D11Device& device, std::span<const std::byte> vertexCode,
                                    std::span<const std::byte> pixelCode,
                                    std::span<const D3D11_INPUT_ELEMENT_DESC> elements, RenderObject& object);

[[nodiscard]] D3D11_TEXTURE2D_DESC descriptionOf(ID3D11Texture2D& texture);
/// One slice with one mip, of default usage.
[[nodiscard]] D3D11_TEXTURE2D_DESC plainTexture(std::uint32_t width, std::uint32_t height, DXGI_FORMAT format,
                                                UINT bindFlags);
/// Of a texture that the processor reads a copy of `original` in.
[[nodiscard]] D3D11_TEXTURE2D_DESC stagingDescription(ID3D11Texture2D& original);

/// Copies the picture into its staging texture and hands out the mapping. False, with `out` empty, if it
/// cannot be mapped.
[[nodiscard]] bool readBackPicture(const ComShared<ID3D11DeviceContext>& context, ID3D11Texture2D& picture,
                                   const ComShared<ID3D11Texture2D>& staging, ImageReadBack& out);

void setWholeViewport(ID3D11DeviceContext& context, std::uint32_t width, std::uint32_t height);

[[nodiscard]] std::int64_t nowNanoseconds();
/// As both renderers tell it: not finite while nothing has been drawn.
[[nodiscard]] float rateSince(std::int64_t startNanoseconds, std::uint64_t count);

} // namespace vexil::module::video_card
