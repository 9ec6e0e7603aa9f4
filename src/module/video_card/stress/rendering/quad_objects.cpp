#include "module/video_card/stress/rendering/quad_objects.h"

#include "module/video_card/stress/rendering/quad_shaders.h"
#include "module/video_card/stress/rendering/render_resources.h"

#include <array>
#include <span>

namespace vexil::module::video_card {

namespace {

struct Vertex {
    float position[3];
    float unused[9];
};
static_assert(sizeof(Vertex) == renderVertexBytes);

constexpr std::array<std::uint32_t, 6> indices = {0, 1, 2, 2, 3, 0};

constexpr D3D11_INPUT_ELEMENT_DESC inputElements[] = {
    {"POSITION", 0, DXGI_FORMAT_R32G32B32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
};

/// Around the middle of the window; half a pixel is left at the edges of an odd one.
std::array<Vertex, 4> corners(std::uint32_t width, std::uint32_t height) {
    const auto w = static_cast<float>(width / 2);
    const auto h = static_cast<float>(height / 2);
    return {Vertex{{-w, -h, 0}, {}}, Vertex{{-w, h, 0}, {}}, Vertex{{w, h, 0}, {}}, Vertex{{w, -h, 0}, {}}};
}

HRESULT createQuad(std::uint32_t width, std::uint32_t height, std::span<const std::byte> pixelCode,
                   ID3D11Device& device, RenderObject& quad) {
    HRESULT result = createShaders(device, shaders::quadVertexShader, pixelCode, inputElements, quad);
    if (FAILED(result)) {
        return result;
    }
    const auto vertices = corners(width, height);
    quad.vertexCount = vertices.size();
    quad.indexCount = indices.size();
    quad.triangleCount = indices.size() / 3;
    result = createGeometryBuffer(device, std::as_bytes(std::span(vertices)), D3D11_BIND_VERTEX_BUFFER,
                                  quad.vertexBuffer);
    return FAILED(result) ? result
                          : createGeometryBuffer(device, std::as_bytes(std::span(indices)),
                                                 D3D11_BIND_INDEX_BUFFER, quad.indexBuffer);
}

Created<RenderObject> createObject(std::uint32_t width, std::uint32_t height,
                                   std::span<const std::byte> pixelCode, ID3D11Device& device) {
    RenderObject quad;
    const HRESULT result = createQuad(width, height, pixelCode, device, quad);
    if (FAILED(result)) {
        return {{}, result};
    }
    return {quad, result};
}

} // namespace

Created<RenderObject> createSceneObject(std::uint32_t width, std::uint32_t height, const Dx11Context& dx11) {
    return createObject(width, height, shaders::landscapePixelShader, *dx11.device);
}

Created<RenderObject> createCompareObject(std::uint32_t width, std::uint32_t height,
                                          const Dx11Context& dx11) {
    return createObject(width, height, shaders::comparisonPixelShader, *dx11.device);
}

} // namespace vexil::module::video_card
