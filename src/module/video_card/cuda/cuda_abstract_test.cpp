#include "module/video_card/cuda/cuda_abstract_test.h"

#include "core/message_keys.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "module/video_card/cuda/cuda_support.h"
#include "module/video_card/cuda/driver_gate.h"
#include "module/video_card/device.h"

namespace vexil::module::video_card {

using core::TestResult;

namespace {

constexpr std::uint32_t marginMiB = 16;
constexpr std::uint32_t launchMiB = 16;

/// MiB of a byte count of which only the low 32 bits are looked at.
std::uint32_t mebibytesOf(std::size_t bytes) { return static_cast<std::uint32_t>(bytes) >> 20; }

/// Wraps at 4 GiB.
std::uint32_t bytesOf(std::uint32_t mebibytes) { return mebibytes << 20; }

} // namespace

CudaAbstractTest::CudaAbstractTest(std::int32_t id) : Test(catalogueDescriptor(id)) {}

bool CudaAbstractTest::isSupported(core::Device* device, std::shared_ptr<core::Device>) const {
    return hasCudaRecord(device);
}

std::uint8_t CudaAbstractTest::execute(const core::TestRunArguments& arguments) {
    const auto device = std::dynamic_pointer_cast<Device>(arguments.device.lock());
    if (device == nullptr) {
        return TestResult::DeviceUnavailable;
    }
    if (isAborted(arguments)) {
        return TestResult::NotCompleted;
    }
    const CudaDeviceRecord* const record = device->cudaRecord();
    if (record == nullptr) {
        reportAndFinish(*arguments.reporter, keys::notSupportedInThisDevice);
        return TestResult::NotSupported;
    }
    CudaRuntime& cuda = CudaRuntime::instance();
    int version = 0;
    cuda.cudaDriverGetVersion(&version);
    if (isCudaDriverOutOfDate(version)) {
        reportAndFinish(*arguments.reporter, keys::cudaDriverIncompatible);
        return TestResult::NotCompleted;
    }
    if (isAborted(arguments)) {
        return TestResult::NotCompleted;
    }
    cudaDeviceProp properties;
    cuda.cudaGetDeviceProperties(&properties, record->index);
    cuda.cudaSetDevice(record->index);
    if (isAborted(arguments)) {
        return TestResult::NotCompleted;
    }
    if (!allocateTestMemory(properties)) {
        releaseAll();
        reportAndFinish(*arguments.reporter, keys::failedToAllocateGpuMemory);
        return TestResult::NotCompleted;
    }
    // Stopped here, the block stays allocated on purpose: it goes with the process or the next reset of the
    // device.
    if (isAborted(arguments)) {
        return TestResult::NotCompleted;
    }
    const std::uint8_t result = runBody(arguments);
    arguments.reporter->setProgress(100);
    return result;
}

bool CudaAbstractTest::allocateErrorFlag() {
    CudaRuntime& cuda = CudaRuntime::instance();
    return cuda.cudaMalloc(&devicePatternOk_, 1) == cudaSuccess &&
           cuda.cudaMemcpy(devicePatternOk_, &patternOk_, 1, cudaMemcpyHostToDevice) == cudaSuccess;
}

bool CudaAbstractTest::allocateTestMemory(const cudaDeviceProp& properties) {
    if (!allocateErrorFlag()) {
        return false;
    }
    CudaRuntime& cuda = CudaRuntime::instance();
    testedMiB_ = mebibytesOf(properties.totalGlobalMem) - marginMiB;
    std::size_t freeBytes = 0, totalBytes = 0;
    if (cuda.cudaMemGetInfo(&freeBytes, &totalBytes) != cudaSuccess) {
        return false;
    }
    const std::uint32_t freeMiB = mebibytesOf(freeBytes) - marginMiB;
    if (testedMiB_ > freeMiB) {
        testedMiB_ = freeMiB;
    }
    do {
        testedMiB_ -= launchMiB;
        if (testedMiB_ == 0) {
            return false;
        }
        cuda.cudaMalloc(&memoryBegin_, bytesOf(testedMiB_));
        // The last error decides, not the result of this call: an older error of the thread costs one more
        // round.
    } while (cuda.cudaGetLastError() != cudaSuccess);
    memoryEnd_ = memoryBegin_ + bytesOf(testedMiB_);
    return true;
}

bool CudaAbstractTest::releaseErrorFlag() {
    if (CudaRuntime::instance().cudaFree(devicePatternOk_) != cudaSuccess) {
        return false;
    }
    devicePatternOk_ = nullptr;
    return true;
}

bool CudaAbstractTest::releaseAll() {
    CudaRuntime& cuda = CudaRuntime::instance();
    if (!releaseErrorFlag() || cuda.cudaFree(memoryBegin_) != cudaSuccess) {
        return false;
    }
    memoryBegin_ = nullptr;
    cuda.cudaDeviceReset();
    return true;
}

bool CudaAbstractTest::isAborted(const core::TestRunArguments& arguments) {
    if (*arguments.cancelRequested == 0 && !hasCompromisingEvent(arguments)) {
        return false;
    }
    reportAndFinish(*arguments.reporter, keys::abortedBySystemEvent);
    return true;
}

std::uint8_t CudaAbstractTest::pollChunk(const core::TestRunArguments& arguments) {
    const bool event = hasCompromisingEvent(arguments);
    if (!event && *arguments.cancelRequested == 0) {
        return TestResult::Passed;
    }
    if (releaseOrReport(arguments)) {
        return TestResult::CleanupFailed;
    }
    // A stop that the user asked for is not explained to them.
    if (event) {
        reportAndFinish(*arguments.reporter, keys::abortedBySystemEvent);
    }
    return TestResult::NotCompleted;
}

bool CudaAbstractTest::releaseOrReport(const core::TestRunArguments& arguments) {
    if (releaseAll()) {
        return false;
    }
    reportAndFinish(*arguments.reporter, keys::failedToFreeGpuMemory);
    return true;
}

std::optional<std::uint8_t> CudaAbstractTest::sweep(const core::TestRunArguments& arguments,
                                                    const SweepPass& pass, const Launch& launch) {
    CudaRuntime& cuda = CudaRuntime::instance();
    std::uint32_t accumulator = pass.accumulatorStart;
    for (std::uint32_t offset = pass.firstMiB; offset < testedMiB_; offset += launchMiB) {
        if (pass.leave == LeaveOnMismatch::AroundLaunch && !patternOk_) {
            break;
        }
        launch(memoryBegin_ + bytesOf(offset));
        // A launch that fails leaves the flag untouched, and the pass goes on.
        cuda.cudaDeviceSynchronize();
        if (pass.readsFlag) {
            // A broken card can deliver any byte, and a bool holds but two of them.
            std::uint8_t flag = 0;
            if (cuda.cudaMemcpy(&flag, devicePatternOk_, 1, cudaMemcpyDeviceToHost) != cudaSuccess) {
                return finishWithoutCommunication(arguments, pass.errorOrder);
            }
            patternOk_ = flag != 0;
        }
        accumulator += pass.step;
        const std::uint32_t percent =
            (accumulator / testedMiB_ + pass.addend) / pass.divisor + pass.progressBase;
        arguments.reporter->setProgress(static_cast<std::uint8_t>(percent));
        if (pass.leave != LeaveOnMismatch::Never && !patternOk_) {
            break;
        }
        if (const std::uint8_t result = pollChunk(arguments); result != TestResult::Passed) {
            return result;
        }
    }
    return std::nullopt;
}

std::uint8_t CudaAbstractTest::finishBody(const core::TestRunArguments& arguments) {
    const bool unreleased = releaseOrReport(arguments);
    if (patternOk_) {
        return unreleased ? TestResult::CleanupFailed : TestResult::Passed;
    }
    // A wrong word outranks memory that could not be released.
    arguments.reporter->report({0, keys::cudaPatternFailed});
    arguments.reporter->setProgress(100);
    return TestResult::Failed;
}

std::uint8_t CudaAbstractTest::finishWithoutCommunication(const core::TestRunArguments& arguments,
                                                          CommunicationErrorOrder order) {
    if (releaseOrReport(arguments)) {
        return TestResult::CleanupFailed;
    }
    if (order == CommunicationErrorOrder::ProgressFirst) {
        reportAndFinish(*arguments.reporter, keys::cudaCommunicationError);
    } else {
        arguments.reporter->report({0, keys::cudaCommunicationError});
        arguments.reporter->setProgress(100);
    }
    return TestResult::NotCompleted;
}

} // namespace vexil::module::video_card
