#include "module/video_card/stress/rendering/sphere_objects.h"

#include "module/video_card/stress/rendering/render_resources.h"
#include "module/video_card/stress/rendering/sphere_shaders.h"

#include <array>
#include <cmath>
#include <numeric>
#include <span>

namespace vexil::module::video_card {

namespace {

constexpr float radiansPerDegree = 3.1415927F / 180.0F;

/// The corners of a patch in steps of latitude and longitude.
struct Corner {
    float theta;
    float phi;
};
constexpr std::array patch = {Corner{0, 0}, Corner{1, 0}, Corner{1, 1},
                              Corner{1, 1}, Corner{0, 1}, Corner{0, 0}};

// clang-format off
constexpr std::array inputElements = {
    D3D11_INPUT_ELEMENT_DESC{"POSITION", 0, DXGI_FORMAT_R32G32B32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
    D3D11_INPUT_ELEMENT_DESC{"NORMAL", 0, DXGI_FORMAT_R32G32B32_FLOAT, 0, 12, D3D11_INPUT_PER_VERTEX_DATA, 0},
    D3D11_INPUT_ELEMENT_DESC{"COLOR", 0, DXGI_FORMAT_R32G32B32A32_FLOAT, 0, 24, D3D11_INPUT_PER_VERTEX_DATA, 0},
    D3D11_INPUT_ELEMENT_DESC{"TEXCOORD", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 40, D3D11_INPUT_PER_VERTEX_DATA, 0},
};
// clang-format on
static_assert(inputElements.size() == 4);

/// `theta` from the pole, `phi` around the axis, in degrees.
SphereVertex vertexAt(float theta, float phi) {
    const float latitude = theta * radiansPerDegree;
    const float longitude = phi * radiansPerDegree;
    SphereVertex vertex{};
    vertex.position[0] = std::sin(longitude) * std::sin(latitude);
    vertex.position[1] = std::cos(latitude);
    vertex.position[2] = std::cos(longitude) * std::sin(latitude);
    return vertex;
}

HRESULT createSphere(std::uint32_t segments, ID3D11Device& device, RenderObject& sphere) {
    HRESULT result =
        createShaders(device, shaders::sphereVertexShader, shaders::spherePixelShader, inputElements, sphere);
    if (FAILED(result)) {
        return result;
    }
    const auto vertices = sphereVertices(segments);
    std::vector<std::uint32_t> indices(vertices.size());
    std::iota(indices.begin(), indices.end(), 0U);
    sphere.vertexCount = vertices.size();
    sphere.indexCount = indices.size();
    // Three vertices make a triangle; this figure has always been half the vertices, and stays so.
    sphere.triangleCount = sphere.vertexCount / 2;
    result = createGeometryBuffer(device, std::as_bytes(std::span(vertices)), D3D11_BIND_VERTEX_BUFFER,
                                  sphere.vertexBuffer);
    return FAILED(result) ? result
                          : createGeometryBuffer(device, std::as_bytes(std::span(indices)),
                                                 D3D11_BIND_INDEX_BUFFER, sphere.indexBuffer);
}

} // namespace

std::vector<SphereVertex> sphereVertices(std::uint32_t segments) {
    const float thetaStep = 180.0F / static_cast<float>(segments);
    const float phiStep = 360.0F / static_cast<float>(segments);
    std::vector<SphereVertex> vertices;
    vertices.reserve(std::size_t{segments} * segments * patch.size());
    for (std::uint32_t i = 0; i < segments; ++i) {
        for (std::uint32_t j = 0; j < segments; ++j) {
            const float theta = static_cast<float>(i) * thetaStep;
            const float phi = static_cast<float>(j) * phiStep;
            for (const auto& corner : patch) {
                vertices.push_back(vertexAt(theta + corner.theta * thetaStep, phi + corner.phi * phiStep));
            }
        }
    }
    return vertices;
}

Created<std::vector<RenderObject>> createSphereObjects(std::uint32_t segments, const Dx11Context& dx11) {
    RenderObject sphere;
    const HRESULT result = createSphere(segments, *dx11.device, sphere);
    if (FAILED(result)) {
        return {{}, result};
    }
    return {{sphere}, result};
}

} // namespace vexil::module::video_card
