#include "module/video_card/direct3d/texture_pipeline/pattern_quad.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/texture_pipeline/pattern_quad_shaders.h"

#include <array>

namespace vexil::module::video_card {

namespace {

struct Vertex {
    float position[3];
    float textureCoordinate[2];
};
static_assert(sizeof(Vertex) == 20);

// The ordinary coordinates of the first corner would be 0, 1.
constexpr std::array vertices = {
    Vertex{{-1, -1, 0}, {1, 0}}, Vertex{{-1, 1, 0}, {0, 0}}, Vertex{{1, 1, 0}, {0, 1}},
    Vertex{{1, 1, 0}, {0, 1}},   Vertex{{1, -1, 0}, {1, 1}}, Vertex{{-1, -1, 0}, {1, 0}},
};
static_assert(sizeof(vertices) == 120);

// clang-format off
constexpr std::array inputElements = {
    D3D11_INPUT_ELEMENT_DESC{"POSITION", 0, DXGI_FORMAT_R32G32B32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
    D3D11_INPUT_ELEMENT_DESC{"TEXCOORD", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 12, D3D11_INPUT_PER_VERTEX_DATA, 0},
};
// clang-format on

} // namespace

HRESULT PatternQuad::create(ID3D11Device& device) {
    const auto vertexCode = shaders::patternQuadVertexShader;
    const auto pixelCode = shaders::patternQuadPixelShader;

    D3D11_BUFFER_DESC description{};
    description.ByteWidth = sizeof(vertices);
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = D3D11_BIND_VERTEX_BUFFER;
    const D3D11_SUBRESOURCE_DATA content{vertices.data(), 0, 0};
    HRESULT result =
        createCom(vertexBuffer, [&](auto out) { return device.CreateBuffer(&description, &content, out); });
    if (FAILED(result)) {
        return result;
    }
    result = createCom(vertexShader, [&](auto out) {
        return device.CreateVertexShader(vertexCode.data(), vertexCode.size(), nullptr, out);
    });
    if (FAILED(result)) {
        return result;
    }
    result = createCom(pixelShader, [&](auto out) {
        return device.CreatePixelShader(pixelCode.data(), pixelCode.size(), nullptr, out);
    });
    if (FAILED(result)) {
        return result;
    }
    return createCom(inputLayout, [&](auto out) {
        return device.CreateInputLayout(inputElements.data(), inputElements.size(), vertexCode.data(),
                                        vertexCode.size(), out);
    });
}

void PatternQuad::bindShaders(ID3D11DeviceContext& context) const {
    context.VSSetShader(vertexShader.get(), nullptr, 0);
    context.PSSetShader(pixelShader.get(), nullptr, 0);
    context.IASetInputLayout(inputLayout.get());
}

void PatternQuad::draw(ID3D11DeviceContext& context) const {
    static constexpr UINT stride = sizeof(Vertex);
    static constexpr UINT offset = 0;
    auto* const buffer = vertexBuffer.get();
    context.IASetVertexBuffers(0, 1, &buffer, &stride, &offset);
    context.IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLELIST);
    context.Draw(vertices.size(), 0);
}

} // namespace vexil::module::video_card
