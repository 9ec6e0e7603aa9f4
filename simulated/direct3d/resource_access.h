#pragma once

#include <d3d11.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

// How the faults get at what is bound to a real context, and at what is in its resources.
namespace vexil::simulated {

template <typename T>
using Com = std::shared_ptr<T>;

// Null where nothing fit is bound.
[[nodiscard]] Com<ID3D11Buffer> boundOutput(ID3D11DeviceContext& real);           ///< u0 of the compute stage
[[nodiscard]] Com<ID3D11Buffer> boundInput(ID3D11DeviceContext& real, UINT slot); ///< of the compute stage
[[nodiscard]] Com<ID3D11Texture2D> boundTarget(ID3D11DeviceContext& real);

// Null for a resource of another kind.
[[nodiscard]] Com<ID3D11Texture2D> asTexture(ID3D11Resource& resource);
[[nodiscard]] Com<ID3D11Buffer> asBuffer(ID3D11Resource& resource);

[[nodiscard]] D3D11_BUFFER_DESC descriptionOf(ID3D11Buffer& buffer);
[[nodiscard]] D3D11_TEXTURE2D_DESC descriptionOf(ID3D11Texture2D& texture);

/// False if the bytes are not all in the buffer, or cannot be read.
[[nodiscard]] bool readBuffer(ID3D11DeviceContext& real, ID3D11Buffer& buffer, UINT offset,
                              std::span<std::byte> bytes);
void writeBuffer(ID3D11DeviceContext& real, ID3D11Buffer& buffer, UINT offset,
                 std::span<const std::byte> bytes);

/// Flips the bits of `mask` in the first byte of a pixel, counted row by row.
void changePixel(ID3D11DeviceContext& real, ID3D11Texture2D& texture, UINT pixel, std::uint8_t mask);

} // namespace vexil::simulated
