#include "module/video_card/stress/rendering/quad_shaders.h"
#include "module/video_card/stress/rendering/sphere_shaders.h"
#include "support/shader_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace vexil::tests {
namespace {

using namespace module::video_card;

TEST(RenderingShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(RenderingShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

/// Whether these numbers stand behind each other in a compiled shader.
bool holds(std::span<const std::byte> bytecode, const std::vector<float>& numbers) {
    return !std::ranges::search(bytecode, std::as_bytes(std::span(numbers))).empty();
}

TEST(LandscapeShader, FadesIntoItsFogAndIsRaisedToItsPower) {
    const std::span<const std::byte> shader = shaders::landscapePixelShader;
    EXPECT_TRUE(holds(shader, {0.01F, 0.1F, 0.2F})) << "the fog's colour";
    EXPECT_TRUE(holds(shader, {-4.32808e-05F})) << "by the cube of the distance";
    EXPECT_TRUE(holds(shader, {0.7F, 0.7F, 0.7F})) << "the power of the three channels";
    EXPECT_FALSE(holds(shader, {0.01F, 0.1F, 0.3F}));
}

TEST(RenderingShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"sphere.vs.dxbc", shaders::sphereVertexShader},
                                     {"sphere.ps.dxbc", shaders::spherePixelShader},
                                     {"quad.vs.dxbc", shaders::quadVertexShader},
                                     {"landscape.ps.dxbc", shaders::landscapePixelShader},
                                     {"comparison.ps.dxbc", shaders::comparisonPixelShader}});
}

} // namespace
} // namespace vexil::tests
