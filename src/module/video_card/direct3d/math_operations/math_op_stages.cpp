#include "module/video_card/catalogue.h"
#include "module/video_card/direct3d/math_operations/math_op_double.h"
#include "module/video_card/direct3d/math_operations/math_op_float.h"
#include "module/video_card/direct3d/math_operations/math_op_int.h"
#include "module/video_card/direct3d/math_operations/math_op_shaders.h"
#include "module/video_card/direct3d/math_operations/math_op_test.h"

// Which operations and shaders make the stages of the two tests.
namespace vexil::module::video_card {

namespace {

constexpr std::int32_t standardTestId = 17;
constexpr std::int32_t advancedTestId = 18;
constexpr auto standardMode = DirectComputeMathOp::standardMode;
constexpr auto advancedMode = DirectComputeMathOp::advancedMode;

} // namespace

template <typename Operations>
std::uint8_t DirectComputeMathOpTest::runStage(const core::TestRunArguments& arguments,
                                               const Device::Direct3DLock& access, std::int32_t mode,
                                               Bytecode shader, Bytecode dotShader) {
    const auto& dx11 = *access.slot();
    Operations operations(mode, dx11.device, dx11.context);
    return runShaders(arguments, *dx11.device, operations, mode, shader, dotShader);
}

DirectComputeMathOpStandardTest::DirectComputeMathOpStandardTest()
    : DirectComputeMathOpTest(catalogueDescriptor(standardTestId)) {}

std::uint8_t DirectComputeMathOpStandardTest::runIntegerStage(const core::TestRunArguments& arguments,
                                                              const Device::Direct3DLock& access) {
    return runStage<DirectComputeMathOpInt>(arguments, access, standardMode, shaders::StandardIntShader);
}

std::uint8_t DirectComputeMathOpStandardTest::runFloatStage(const core::TestRunArguments& arguments,
                                                            const Device::Direct3DLock& access) {
    return runStage<DirectComputeMathOpFloat>(arguments, access, standardMode, shaders::StandardFloatShader);
}

std::uint8_t DirectComputeMathOpStandardTest::runDoubleStage(const core::TestRunArguments& arguments,
                                                             const Device::Direct3DLock& access) {
    return runStage<DirectComputeMathOpDouble>(arguments, access, standardMode,
                                               shaders::StandardDoubleShader);
}

DirectComputeMathOpAdvancedTest::DirectComputeMathOpAdvancedTest()
    : DirectComputeMathOpTest(catalogueDescriptor(advancedTestId)) {}

std::uint8_t DirectComputeMathOpAdvancedTest::runIntegerStage(const core::TestRunArguments& arguments,
                                                              const Device::Direct3DLock& access) {
    return runStage<DirectComputeMathOpInt>(arguments, access, advancedMode, shaders::AdvancedIntShader);
}

std::uint8_t DirectComputeMathOpAdvancedTest::runFloatStage(const core::TestRunArguments& arguments,
                                                            const Device::Direct3DLock& access) {
    return runStage<DirectComputeMathOpFloat>(arguments, access, advancedMode, shaders::AdvancedFloatShader,
                                              shaders::DotProductShader);
}

std::uint8_t DirectComputeMathOpAdvancedTest::runDoubleStage(const core::TestRunArguments& arguments,
                                                             const Device::Direct3DLock& access) {
    return runStage<DirectComputeMathOpDouble>(arguments, access, advancedMode,
                                               shaders::AdvancedDoubleShader);
}

} // namespace vexil::module::video_card
