#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

#include <cstdint>

namespace vexil::module::video_card {

/// One model, ready to be drawn. Copies share the objects of the card.
struct RenderObject {
    ComShared<ID3D11VertexShader> vertexShader;
    ComShared<ID3D11PixelShader> pixelShader;
    ComShared<ID3D11InputLayout> inputLayout;
    ComShared<ID3D11Buffer> vertexBuffer;
    ComShared<ID3D11Buffer> indexBuffer; ///< 32-bit indices
    std::uint64_t vertexCount = 0;
    std::uint64_t indexCount = 0;
    std::uint64_t triangleCount = 0;
};

/// Bytes of one vertex in the vertex buffer of any render object.
inline constexpr UINT renderVertexBytes = 48;

/// What a maker of objects made; empty where `result` is a failure.
template <typename T>
struct Created {
    T value;
    HRESULT result = S_OK;
};

/// Binds the object's layout, shaders and buffers and draws it as a list of triangles.
void drawRenderObject(ID3D11DeviceContext& context, const RenderObject& object);

} // namespace vexil::module::video_card
