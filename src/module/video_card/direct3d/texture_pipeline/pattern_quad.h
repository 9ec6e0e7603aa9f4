#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

namespace vexil::module::video_card {

/// A quad over the whole target whose texture coordinates are exchanged, so that what it draws is its texture
/// transposed.
struct PatternQuad {
    ComShared<ID3D11Buffer> vertexBuffer;
    ComShared<ID3D11VertexShader> vertexShader;
    ComShared<ID3D11PixelShader> pixelShader;
    ComShared<ID3D11InputLayout> inputLayout;

    /// Makes the objects, in this order. The first failure ends it and is returned.
    [[nodiscard]] HRESULT create(ID3D11Device& device);

    /// Binds shaders and layout; the geometry comes with `draw`.
    void bindShaders(ID3D11DeviceContext& context) const;
    void draw(ID3D11DeviceContext& context) const;
};

} // namespace vexil::module::video_card
