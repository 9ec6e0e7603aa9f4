#pragma once

#include <d3d11.h>

#include <array>

namespace vexil::module::video_card {

/// A corner in clip space with the place of the texture that belongs to it: what the vertex shader of the
/// textured quads reads.
struct TexturedVertex {
    float position[3];
    float textureCoordinate[2];
};
static_assert(sizeof(TexturedVertex) == 20);

// clang-format off
inline constexpr std::array texturedVertexElements = {
    D3D11_INPUT_ELEMENT_DESC{"POSITION", 0, DXGI_FORMAT_R32G32B32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
    D3D11_INPUT_ELEMENT_DESC{"TEXCOORD", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 12, D3D11_INPUT_PER_VERTEX_DATA, 0},
};
// clang-format on

} // namespace vexil::module::video_card
