#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/render_object.h"

#include <cstdint>
#include <vector>

namespace vexil::module::video_card {

/// One corner of the sphere's triangles. Only the position reaches the picture.
struct SphereVertex {
    float position[3];
    float normal[3];
    float color[4];
    float textureCoordinate[2];
};
static_assert(sizeof(SphereVertex) == renderVertexBytes);

/// A sphere of radius 1 in `segments` times `segments` patches of two triangles each, six vertices a patch.
[[nodiscard]] std::vector<SphereVertex> sphereVertices(std::uint32_t segments);

/// The sphere as a list of one object, for `D3D11OffscreenRenderer`. The list is empty if anything could not
/// be made; 0x80070006 stands for a shader that came back null.
[[nodiscard]] Created<std::vector<RenderObject>> createSphereObjects(std::uint32_t segments,
                                                                     const Dx11Context& dx11);

} // namespace vexil::module::video_card
