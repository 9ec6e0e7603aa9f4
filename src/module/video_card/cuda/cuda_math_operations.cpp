#include "module/video_card/cuda/cuda_math_operations.h"

#include "core/message_keys.h"
#include "core/test_result.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "module/video_card/cuda/cuda_support.h"
#include "module/video_card/cuda/math_kernels.h"

#include <bit>
#include <cmath>
#include <cstdlib>
#include <initializer_list>
#include <string>

namespace vexil::module::video_card {

using core::TestResult;

template <typename T>
void CudaMathOperations<T>::prepare(std::span<const MathRow<T>> rows) {
    operationCount_ = static_cast<std::uint32_t>(rows.size());
    valuesPerOperation_ = mathValuesPerRow;
    bufferBytes_ = std::uint64_t{operationCount_} * valuesPerOperation_ * sizeof(T);
    for (const MathRow<T>& row : rows) {
        inputA_.insert(inputA_.end(), row.a.begin(), row.a.end());
        inputB_.insert(inputB_.end(), row.b.begin(), row.b.end());
        inputC_.insert(inputC_.end(), row.c.begin(), row.c.end());
        expected_.insert(expected_.end(), row.expected.begin(), row.expected.end());
    }
}

template <typename T>
std::uint8_t CudaMathOperations<T>::run(std::int32_t advanced) {
    CudaRuntime& cuda = CudaRuntime::instance();
    std::vector<T> results(std::size_t{operationCount_} * valuesPerOperation_);
    if (!allocate()) {
        release();
        reportAndFinish(*arguments_.reporter, keys::failedToAllocateGpuMemory);
        return TestResult::NotCompleted;
    }
    if (!copyInputs()) {
        return finishWithoutCommunication();
    }
    launchMathKernel(advanced != 0, operationCount_, valuesPerOperation_, a_, b_, c_, out_);
    // A launch that fails leaves its results to what the memory held.
    cuda.cudaDeviceSynchronize();
    if (cuda.cudaMemcpy(results.data(), out_, bufferBytes_, cudaMemcpyDeviceToHost) != cudaSuccess) {
        return finishWithoutCommunication();
    }
    for (std::size_t element = 0; element < results.size(); ++element) {
        if (!isRight(element, results[element])) {
            releaseOrReport();
            reportAndFinish(*arguments_.reporter, keys::mathOperationFailed);
            return TestResult::Failed;
        }
    }
    return releaseOrReport() ? TestResult::CleanupFailed : TestResult::Passed;
}

template <typename T>
bool CudaMathOperations<T>::allocate() {
    CudaRuntime& cuda = CudaRuntime::instance();
    for (T** buffer : {&a_, &b_, &c_, &out_}) {
        if (cuda.cudaMalloc(buffer, bufferBytes_) != cudaSuccess) {
            return false;
        }
    }
    return true;
}

template <typename T>
bool CudaMathOperations<T>::copyInputs() {
    CudaRuntime& cuda = CudaRuntime::instance();
    return cuda.cudaMemcpy(a_, inputA_.data(), bufferBytes_, cudaMemcpyHostToDevice) == cudaSuccess &&
           cuda.cudaMemcpy(b_, inputB_.data(), bufferBytes_, cudaMemcpyHostToDevice) == cudaSuccess &&
           cuda.cudaMemcpy(c_, inputC_.data(), bufferBytes_, cudaMemcpyHostToDevice) == cudaSuccess;
}

template <typename T>
bool CudaMathOperations<T>::release() {
    CudaRuntime& cuda = CudaRuntime::instance();
    bool released = true;
    for (T* buffer : {a_, b_, c_, out_}) {
        if (released) {
            released = cuda.cudaFree(buffer) == cudaSuccess;
        }
    }
    a_ = b_ = c_ = out_ = nullptr;
    // Unlike in the memory tests, after a failed free as well.
    cuda.cudaDeviceReset();
    return released;
}

template <typename T>
bool CudaMathOperations<T>::releaseOrReport() {
    if (release()) {
        return false;
    }
    reportAndFinish(*arguments_.reporter, keys::failedToFreeGpuMemory);
    return true;
}

template <typename T>
std::uint8_t CudaMathOperations<T>::finishWithoutCommunication() {
    if (releaseOrReport()) {
        return TestResult::CleanupFailed;
    }
    reportAndFinish(*arguments_.reporter, keys::cudaCommunicationError);
    return TestResult::NotCompleted;
}

template class CudaMathOperations<std::int32_t>;
template class CudaMathOperations<float>;

CudaMathOperationsInt::CudaMathOperationsInt(std::int32_t mode, const core::TestRunArguments& arguments)
    : CudaMathOperations(arguments) {
    if (mode == standardMode) {
        prepareStandard();
    } else if (mode == advancedMode) {
        prepareAdvanced();
    }
}

void CudaMathOperationsInt::prepareStandard() { prepare(integerStandard); }
void CudaMathOperationsInt::prepareAdvanced() { prepare(integerAdvanced); }

bool CudaMathOperationsInt::isRight(std::size_t element, std::int32_t result) const {
    return result == expected_[element];
}

CudaMathOperationsFloat::CudaMathOperationsFloat(std::int32_t mode, const core::TestRunArguments& arguments)
    : CudaMathOperations(arguments) {
    if (mode == standardMode) {
        prepareStandard();
    } else if (mode == advancedMode) {
        prepareAdvanced();
    }
}

void CudaMathOperationsFloat::prepareStandard() {
    prepare(floatStandard);
    takeTolerances(floatStandard);
}

void CudaMathOperationsFloat::prepareAdvanced() {
    prepare(floatAdvanced);
    takeTolerances(floatAdvanced);
}

void CudaMathOperationsFloat::takeTolerances(std::span<const MathRow<float>> rows) {
    for (const MathRow<float>& row : rows) {
        maxUlps_.push_back(row.maxUlps);
        absoluteTolerance_.push_back(row.absoluteTolerance);
    }
}

bool CudaMathOperationsFloat::isRight(std::size_t element, float result) const {
    const std::size_t row = element / valuesPerOperation_;
    return isFloatRight(result, expected_[element], maxUlps_[row], absoluteTolerance_[row]);
}

bool isFloatRight(float result, float expected, std::int32_t maxUlps, float absoluteTolerance) {
    if (absoluteTolerance >= std::fabs(result - expected)) {
        return true;
    }
    if (!std::isfinite(result) || !std::isfinite(expected)) {
        return true;
    }
    // A wrong sign passes once it is beyond the tolerance: the rule of this comparison, kept as it stands.
    if (std::signbit(result) != std::signbit(expected)) {
        return true;
    }
    return std::abs(std::bit_cast<std::int32_t>(result) - std::bit_cast<std::int32_t>(expected)) <= maxUlps;
}

} // namespace vexil::module::video_card
