#include "module/video_card/cuda/cuda_abstract_math_op_test.h"

#include "module/video_card/catalogue.h"
#include "module/video_card/cuda/cuda_math_operations.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "module/video_card/cuda/cuda_support.h"
#include "module/video_card/cuda/driver_gate.h"
#include "module/video_card/device.h"
#include "module/video_card/message_keys.h"

namespace vexil::module::video_card {

using core::TestResult;

namespace {

std::shared_ptr<Device> lockCard(const core::TestRunArguments& arguments) {
    return std::dynamic_pointer_cast<Device>(arguments.device.lock());
}

std::uint8_t finish(const core::TestRunArguments& arguments, const std::string& key, std::uint8_t result) {
    arguments.reporter->setProgress(100);
    arguments.reporter->report({0, key});
    return result;
}

/// The card is asked for anew before each stage, since each ends with a reset of the device.
bool selectDevice(const core::TestRunArguments& arguments) {
    const auto device = lockCard(arguments);
    if (device == nullptr || device->cudaRecord() == nullptr) {
        return false;
    }
    CudaRuntime::instance().cudaSetDevice(device->cudaRecord()->index);
    return true;
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
            return finish(arguments, keys::notSupportedInThisDevice, TestResult::NotSupported);
        }
    }
    int version = 0;
    CudaRuntime::instance().cudaDriverGetVersion(&version);
    if (isCudaDriverOutOfDate(version)) {
        return finish(arguments, keys::cudaDriverIncompatible, TestResult::NotCompleted);
    }
    if (!selectDevice(arguments)) {
        return TestResult::DeviceUnavailable;
    }
    const std::uint8_t result = runIntegerStage(arguments);
    if (result != TestResult::Passed) {
        return result;
    }
    if (!selectDevice(arguments)) {
        return TestResult::DeviceUnavailable;
    }
    return runFloatStage(arguments);
}

std::uint8_t CudaAbstractMathOpTest::checkStop(const core::TestRunArguments& arguments) {
    if (hasCompromisingEvent(arguments)) {
        return finish(arguments, keys::abortedBySystemEvent, TestResult::NotCompleted);
    }
    return *arguments.cancelRequested != 0 ? TestResult::NotCompleted : TestResult::Passed;
}

CudaStandardMathOperation::CudaStandardMathOperation() : CudaAbstractMathOpTest(19) {}
CudaAdvancedMathOperation::CudaAdvancedMathOperation() : CudaAbstractMathOpTest(20) {}

std::uint8_t CudaStandardMathOperation::runIntegerStage(const core::TestRunArguments& arguments) {
    const std::uint8_t result = CudaMathOperationsInt(0, arguments).run(0);
    return result == TestResult::Passed ? checkStop(arguments) : result;
}

std::uint8_t CudaStandardMathOperation::runFloatStage(const core::TestRunArguments& arguments) {
    const std::uint8_t result = CudaMathOperationsFloat(0, arguments).run(0);
    return result == TestResult::Passed ? checkStop(arguments) : result;
}

std::uint8_t CudaAdvancedMathOperation::runIntegerStage(const core::TestRunArguments& arguments) {
    const std::uint8_t result = CudaMathOperationsInt(1, arguments).run(1);
    return result == TestResult::Passed ? checkStop(arguments) : result;
}

std::uint8_t CudaAdvancedMathOperation::runFloatStage(const core::TestRunArguments& arguments) {
    const std::uint8_t result = CudaMathOperationsFloat(1, arguments).run(1);
    return result == TestResult::Passed ? checkStop(arguments) : result;
}

} // namespace vexil::module::video_card
