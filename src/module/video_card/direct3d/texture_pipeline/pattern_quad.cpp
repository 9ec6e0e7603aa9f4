#include "module/video_card/direct3d/texture_pipeline/pattern_quad.h"

#include "module/video_card/direct3d/resource_creation.h"
#include "module/video_card/direct3d/texture_pipeline/pattern_quad_shaders.h"
#include "module/video_card/direct3d/textured_quad_shaders.h"
#include "module/video_card/direct3d/textured_vertex.h"

#include <array>
#include <span>

namespace vexil::module::video_card {

namespace {

// clang-format off
// The ordinary coordinates of the first corner would be 0, 1.
constexpr std::array vertices = {
    TexturedVertex{{-1, -1, 0}, {1, 0}},
    TexturedVertex{{-1, 1, 0}, {0, 0}},
    TexturedVertex{{1, 1, 0}, {0, 1}},
    TexturedVertex{{1, 1, 0}, {0, 1}},
    TexturedVertex{{1, -1, 0}, {1, 1}},
    TexturedVertex{{-1, -1, 0}, {1, 0}},
};
// clang-format on
static_assert(sizeof(vertices) == 120);

} // namespace

HRESULT PatternQuad::create(ID3D11Device& device) {
    const auto vertexCode = shaders::texturedQuadVertexShader;
    HRESULT result = createGeometryBuffer(device, std::as_bytes(std::span(vertices)),
                                          D3D11_BIND_VERTEX_BUFFER, vertexBuffer);
    if (SUCCEEDED(result)) {
        result =
            createShaderPair(device, vertexCode, shaders::patternQuadPixelShader, vertexShader, pixelShader);
    }
    return FAILED(result) ? result
                          : createInputLayout(device, texturedVertexElements, vertexCode, inputLayout);
}

void PatternQuad::bindShaders(ID3D11DeviceContext& context) const {
    context.VSSetShader(vertexShader.get(), nullptr, 0);
    context.PSSetShader(pixelShader.get(), nullptr, 0);
    context.IASetInputLayout(inputLayout.get());
}

void PatternQuad::draw(ID3D11DeviceContext& context) const {
    static constexpr UINT stride = sizeof(TexturedVertex);
    static constexpr UINT offset = 0;
    auto* const buffer = vertexBuffer.get();
    context.IASetVertexBuffers(0, 1, &buffer, &stride, &offset);
    context.IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLELIST);
    context.Draw(vertices.size(), 0);
}

} // namespace vexil::module::video_card
