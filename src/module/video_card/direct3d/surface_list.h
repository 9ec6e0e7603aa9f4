#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexil::module::video_card {

/// One piece of video memory under test: a texture that a shader can read.
struct VideoSurface {
    ComShared<ID3D11Texture2D> texture;
    ComShared<ID3D11ShaderResourceView> view;
};

inline constexpr UINT surfaceExtent = 1024; ///< pixels, both ways
inline constexpr unsigned surfaceBytesShift = 22;
inline constexpr std::size_t surfaceBytes = std::size_t{1} << surfaceBytesShift; ///< 4 MiB, 4 bytes a pixel

/// Makes `count` surfaces. Fewer if the memory is full before, but at least one. False if there is none, or
/// if anything else went wrong.
[[nodiscard]] bool createSurfaces(ID3D11Device& device, std::uint32_t count,
                                  std::vector<VideoSurface>& surfaces);

} // namespace vexil::module::video_card
