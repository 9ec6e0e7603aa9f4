#pragma once

#include "module/video_card/direct3d/com_shared.h"
#include "module/video_card/direct3d/resource_creation.h"
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

/// A dynamic constant buffer that starts with `content`.
[[nodiscard]] HRESULT createConstantBuffer(ID3D11Device& device, std::span<const std::byte> content,
                                           ComShared<ID3D11Buffer>& buffer);

/// Culls back faces, and is bound as soon as it is made.
[[nodiscard]] HRESULT createRasterizer(ID3D11Device& device, ID3D11DeviceContext& context,
                                       D3D11_FILL_MODE fill, bool frontCounterClockwise,
                                       ComShared<ID3D11RasterizerState>& state);

/// Vertex shader, pixel shader and input layout of the object, in this order. 0x80070006 for a shader that
/// came back null.
[[nodiscard]] HRESULT createShaders(ID3D11Device& device, std::span<const std::byte> vertexCode,
                                    std::span<const std::byte> pixelCode,
                                    std::span<const D3D11_INPUT_ELEMENT_DESC> elements, RenderObject& object);

/// Copies the picture into its staging texture and hands out the mapping. False, with `out` empty, if it
/// cannot be mapped.
[[nodiscard]] bool readBackPicture(const ComShared<ID3D11DeviceContext>& context, ID3D11Texture2D& picture,
                                   const ComShared<ID3D11Texture2D>& staging, ImageReadBack& out);

void setWholeViewport(ID3D11DeviceContext& context, std::uint32_t width, std::uint32_t height);

[[nodiscard]] std::int64_t nowNanoseconds();
/// As both renderers tell it: not finite while nothing has been drawn.
[[nodiscard]] float rateSince(std::int64_t startNanoseconds, std::uint64_t count);

} // namespace vexil::module::video_card
