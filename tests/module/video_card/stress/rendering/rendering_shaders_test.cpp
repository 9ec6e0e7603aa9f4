#include "module/video_card/stress/rendering/quad_shaders.h"
#include "module/video_card/stress/rendering/sphere_shaders.h"
#include "support/shader_folder.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using namespace module::video_card;

TEST(RenderingShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(RenderingShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(RenderingShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"sphere.vs.dxbc", shaders::sphereVertexShader},
                                     {"sphere.ps.dxbc", shaders::spherePixelShader},
                                     {"quad.vs.dxbc", shaders::quadVertexShader},
                                     {"landscape.ps.dxbc", shaders::landscapePixelShader},
                                     {"comparison.ps.dxbc", shaders::comparisonPixelShader}});
}

} // namespace
} // namespace vexil::tests
