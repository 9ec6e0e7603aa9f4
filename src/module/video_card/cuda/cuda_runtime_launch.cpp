// The half of the runtime that knows of device code: registration, the launch path, and the state of a
// thread.
#include "module/video_card/cuda/cuda_runtime.h"

#include <algorithm>
#include <utility>

namespace vexil::module::video_card {

using namespace cuda;

CudaRuntime::ThreadState& CudaRuntime::thread() const {
    thread_local std::map<std::uint64_t, ThreadState> states;
    return states[serial_];
}

cudaError_t CudaRuntime::record(cudaError_t error) const {
    if (error != cudaSuccess) {
        thread().lastError = error;
    }
    return error;
}

cudaError_t CudaRuntime::cudaGetLastError() { return std::exchange(thread().lastError, cudaSuccess); }

cudaError_t CudaRuntime::cudaPushCallConfiguration(dim3 grid, dim3 block, std::size_t sharedBytes,
                                                   cudaStream_t stream) {
    thread().configurations.push_back({grid, block, sharedBytes, stream});
    return cudaSuccess;
}

cudaError_t CudaRuntime::cudaPopCallConfiguration(dim3* grid, dim3* block, std::size_t* sharedBytes,
                                                  cudaStream_t* stream) {
    auto& configurations = thread().configurations;
    if (configurations.empty()) {
        return record(cudaErrorMissingConfiguration);
    }
    const CallConfiguration top = configurations.back();
    configurations.pop_back();
    *grid = top.grid;
    *block = top.block;
    *sharedBytes = top.sharedBytes;
    *stream = top.stream;
    return cudaSuccess;
}

cudaError_t CudaRuntime::cudaLaunchKernel(const void* function, dim3 grid, dim3 block, void** arguments,
                                          std::size_t sharedBytes, cudaStream_t stream) {
    cudaError_t error = enterContext();
    CUfunction handle = nullptr;
    if (error == cudaSuccess) {
        error = findFunction(function, handle);
    }
    if (error == cudaSuccess && driver_.cuLaunchKernel == nullptr) {
        error = cudaErrorInsufficientDriver;
    }
    if (error == cudaSuccess) {
        error = static_cast<cudaError_t>(
            driver_.cuLaunchKernel(handle, grid.x, grid.y, grid.z, block.x, block.y, block.z,
                                   static_cast<unsigned>(sharedBytes), stream, arguments, nullptr));
    }
    return record(error);
}

cudaError_t CudaRuntime::findFunction(const void* key, CUfunction& function) {
    const std::lock_guard lock(mutex_);
    DeviceState& state = devices_[thread().device];
    if (const auto known = state.functions.find(key); known != state.functions.end()) {
        function = known->second;
        return cudaSuccess;
    }
    for (const auto& binary : fatBinaries_) {
        const auto found = std::ranges::find(binary->functions, key, &FatBinary::Function::key);
        if (found == binary->functions.end()) {
            continue;
        }
        if (driver_.cuModuleLoadData == nullptr || driver_.cuModuleGetFunction == nullptr) {
            return cudaErrorInsufficientDriver;
        }
        auto module = state.modules.find(binary.get());
        if (module == state.modules.end()) {
            // The driver compiles the PTX for its card here, once for each life of the primary context.
            CUmodule loaded = nullptr;
            if (const CUresult error = driver_.cuModuleLoadData(&loaded, binary->image);
                error != CUDA_SUCCESS) {
                return static_cast<cudaError_t>(error);
            }
            module = state.modules.emplace(binary.get(), loaded).first;
        }
        const CUresult error = driver_.cuModuleGetFunction(&function, module->second, found->name);
        if (error == CUDA_SUCCESS) {
            state.functions.emplace(key, function);
        }
        return static_cast<cudaError_t>(error);
    }
    return cudaErrorInvalidDeviceFunction;
}

CudaRuntime::FatBinary* CudaRuntime::cudaRegisterFatBinary(const char* image) {
    const std::lock_guard lock(mutex_);
    fatBinaries_.push_back(std::make_unique<FatBinary>());
    fatBinaries_.back()->image = image;
    return fatBinaries_.back().get();
}

void CudaRuntime::cudaRegisterFunction(FatBinary* binary, const void* key, const char* name,
                                       int threadLimit) {
    const std::lock_guard lock(mutex_);
    binary->functions.push_back({key, name, threadLimit});
}

void CudaRuntime::cudaRegisterFatBinaryEnd(FatBinary* binary) {
    const std::lock_guard lock(mutex_);
    binary->complete = true;
}

void CudaRuntime::cudaUnregisterFatBinary(FatBinary* binary) {
    const std::lock_guard lock(mutex_);
    // The driver is not told: at the end of a process it may be gone already, and modules end with their
    // context.
    for (auto& [ordinal, state] : devices_) {
        state.modules.erase(binary);
        for (const FatBinary::Function& function : binary->functions) {
            state.functions.erase(function.key);
        }
    }
    std::erase_if(fatBinaries_, [&](const auto& owned) { return owned.get() == binary; });
}

} // namespace vexil::module::video_card
