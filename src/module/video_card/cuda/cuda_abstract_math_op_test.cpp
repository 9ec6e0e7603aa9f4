#include "module/video_card/cuda/cuda_abstract_math_op_test.h"

#include "core/message_keys.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/cuda/cuda_math_operations.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "module/video_card/cuda/cuda_support.h"
#include "module/video_card/cuda/driver_gate.h"
#include "module/video_card/device.h"

namespace vexil::module::video_card {

using core::TestResult;

namespace {

constexpr auto standardMode = CudaAbstractMathOperation::standardMode;
constexpr auto advancedMode = CudaAbstractMathOperation::advancedMode;

std::shared_ptr<Device> lockCard(const core::TestRunArguments& arguments) {
    return std::dynamic_pointer_cast<Device>(arguments.device.lock());
}

} // namespace

CudaAbstractMathOpTest::CudaAbstractMathOpTest(std::int32_t id) : Test(catalogueDescriptor(id)) {}

bool CudaAbstractMathOpTest::isSupported(core::Device* device, std::shared_ptr<core::Device>) const {
    return hasCudaRecord(device);
}

std::uint8_t CudaAbstractMathOpTest::execute(const core::TestRunArguments& arguments) {
    if (const std::uint8_t stop = checkStop(arguments); stop != TestResult::Passed) {
        return stop;
    }
    {
        const auto device = lockCard(arguments);
        if (device == nullptr) {
            return TestResult::DeviceUnavailable;
        }
        if (device->cudaRecord() == nullptr) {
            reportAndFinish(*arguments.reporter, keys::notSupportedInThisDevice);
            return TestResult::NotSupported;
        }
    }
    CudaRuntime& cuda = CudaRuntime::instance();
    int version = 0;
    cuda.cudaDriverGetVersion(&version);
    if (isCudaDriverOutOfDate(version)) {
        reportAndFinish(*arguments.reporter, keys::cudaDriverIncompatible);
        return TestResult::NotCompleted;
    }
    // Held from here on: a card that goes between the stages does not end the test.
    const auto device = lockCard(arguments);
    if (device == nullptr || device->cudaRecord() == nullptr) {
        return TestResult::DeviceUnavailable;
    }
    const std::int32_t index = device->cudaRecord()->index;
    cuda.cudaSetDevice(index);
    const std::uint8_t result = runIntegerStage(arguments);
    if (result != TestResult::Passed) {
        return result;
    }
    cuda.cudaSetDevice(index); // the stage has ended with a reset of the device
    return runFloatStage(arguments);
}

std::uint8_t CudaAbstractMathOpTest::checkStop(const core::TestRunArguments& arguments) {
    if (hasCompromisingEvent(arguments)) {
        reportAndFinish(*arguments.reporter, keys::abortedBySystemEvent);
        return TestResult::NotCompleted;
    }
    return *arguments.cancelRequested != 0 ? TestResult::NotCompleted : TestResult::Passed;
}

CudaStandardMathOperation::CudaStandardMathOperation() : CudaAbstractMathOpTest(19) {}
CudaAdvancedMathOperation::CudaAdvancedMathOperation() : CudaAbstractMathOpTest(20) {}

template <typename Stage>
std::uint8_t CudaAbstractMathOpTest::runStage(std::int32_t mode, const core::TestRunArguments& arguments) {
    const std::uint8_t result = Stage(mode, arguments).run(mode);
    return result == TestResult::Passed ? checkStop(arguments) : result;
}

std::uint8_t CudaStandardMathOperation::runIntegerStage(const core::TestRunArguments& arguments) {
    return runStage<CudaMathOperationsInt>(standardMode, arguments);
}

std::uint8_t CudaStandardMathOperation::runFloatStage(const core::TestRunArguments& arguments) {
    return runStage<CudaMathOperationsFloat>(standardMode, arguments);
}

std::uint8_t CudaAdvancedMathOperation::runIntegerStage(const core::TestRunArguments& arguments) {
    return runStage<CudaMathOperationsInt>(advancedMode, arguments);
}

std::uint8_t CudaAdvancedMathOperation::runFloatStage(const core::TestRunArguments& arguments) {
    return runStage<CudaMathOperationsFloat>(advancedMode, arguments);
}

} // namespace vexil::module::video_card
