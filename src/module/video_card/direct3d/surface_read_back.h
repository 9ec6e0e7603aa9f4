#pragma once

#include <d3d11.h>

#include <cstdint>
#include <span>

namespace vexil::module::video_card {

/// Copies a surface of 4-byte pixels to host memory, row behind row, with a resolve on the way that gives the
/// card one more operation to do. `image` has room for the whole surface. The first failure of an operation
/// is returned.
[[nodiscard]] HRESULT readBackSurface(ID3D11Device& device, ID3D11DeviceContext& context,
                                      ID3D11Texture2D& texture, std::span<std::uint8_t> image);

} // namespace vexil::module::video_card
