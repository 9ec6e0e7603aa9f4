#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/render_object.h"

#include <cstdint>

// Quads over the whole window for `D3D11AnimationRenderer`: the same geometry and vertex shader, each with
// its own pixel shader. The object is empty if anything could not be made.
namespace vexil::module::video_card {

/// The landscape: a fixed function of a pixel and the time.
[[nodiscard]] Created<RenderObject> createSceneObject(std::uint32_t width, std::uint32_t height,
                                                      const Dx11Context& dx11);

/// Pixels of the first picture where it differs from the second, and zero where the two are equal.
[[nodiscard]] Created<RenderObject> createCompareObject(std::uint32_t width, std::uint32_t height,
                                                        const Dx11Context& dx11);

} // namespace vexil::module::video_card
