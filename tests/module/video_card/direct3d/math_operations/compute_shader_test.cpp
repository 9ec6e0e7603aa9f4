#include "module/video_card/direct3d/math_operations/math_op_shaders.h"
#include "simulated/direct3d/work_faults.h"
#include "support/shader_folder.h"

#include <gtest/gtest.h>

// The seven compute shaders.
namespace vexil::tests {
namespace {

namespace shaders = module::video_card::shaders;

TEST(ComputeShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(ComputeShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(ComputeShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"standard_int.cs.dxbc", shaders::StandardIntShader},
                                     {"advanced_int.cs.dxbc", shaders::AdvancedIntShader},
                                     {"standard_float.cs.dxbc", shaders::StandardFloatShader},
                                     {"advanced_float.cs.dxbc", shaders::AdvancedFloatShader},
                                     {"dot_product.cs.dxbc", shaders::DotProductShader},
                                     {"standard_double.cs.dxbc", shaders::StandardDoubleShader},
                                     {"advanced_double.cs.dxbc", shaders::AdvancedDoubleShader}});
}

TEST(ComputeShaders, ForDoublesSayThatTheyNeedThem) {
    EXPECT_TRUE(simulated::needsDoubles(shaders::StandardDoubleShader));
    EXPECT_TRUE(simulated::needsDoubles(shaders::AdvancedDoubleShader));
    EXPECT_FALSE(simulated::needsDoubles(shaders::AdvancedFloatShader));
    EXPECT_FALSE(simulated::needsDoubles(shaders::StandardIntShader));
}

} // namespace
} // namespace vexil::tests
