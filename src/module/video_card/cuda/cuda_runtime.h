#pragma once

#include "core/library_loader.h"
#include "module/video_card/cuda/cuda_driver_api.h"
#include "module/video_card/cuda/cuda_runtime_types.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace vexil::module::video_card {

/// The CUDA runtime's calls in use, over the driver library, which is loaded when a call first needs it. A
/// machine without that library, or with one that lacks an entry point, gets `cudaErrorInsufficientDriver`
/// from what needs it.
///
/// As in the runtime: each thread has its own current device (0 at first) and its own last error. Any call
/// that fails records its error there; success never clears it, only `cudaGetLastError` does. The primary
/// context of a device is made by the first call that needs it and ends with `cudaDeviceReset`, together with
/// all memory of the device. Calls may come from several threads at a time.
class CudaRuntime {
public:
    using LoaderOf = ::Module* (*)();

    /// `driverLibrary` is the name under which `loader` finds the driver. The library is never released:
    /// drivers do not survive being unloaded while a process lives.
    CudaRuntime(LoaderOf loader, std::string driverLibrary);
    CudaRuntime(const CudaRuntime&) = delete;
    CudaRuntime& operator=(const CudaRuntime&) = delete;
    ~CudaRuntime();

    /// The one of the process, over the machine's driver.
    static CudaRuntime& instance();

    /// 0 without a driver, which counts as success.
    cudaError_t cudaDriverGetVersion(int* version);
    cudaError_t cudaGetDeviceCount(int* count);
    /// Writes a text like "0000:0A:00.0"; `length` counts the NUL at its end.
    cudaError_t cudaDeviceGetPCIBusId(char* text, int length, int device);
    cudaError_t cudaGetDeviceProperties(cudaDeviceProp* properties, int device);
    cudaError_t cudaSetDevice(int device);
    cudaError_t cudaMemGetInfo(std::size_t* freeBytes, std::size_t* totalBytes);
    /// No bytes give a null pointer and success.
    cudaError_t cudaMalloc(void** memory, std::size_t bytes);
    template <typename T>
    cudaError_t cudaMalloc(T** memory, std::size_t bytes) {
        void* untyped = *memory;
        const cudaError_t error = cudaMalloc(&untyped, bytes);
        *memory = static_cast<T*>(untyped);
        return error;
    }
    /// A null pointer is freed with success.
    cudaError_t cudaFree(void* memory);
    cudaError_t cudaMemcpy(void* to, const void* from, std::size_t bytes, cudaMemcpyKind kind);
    cudaError_t cudaDeviceSynchronize();
    cudaError_t cudaDeviceReset();
    /// The last error of this thread, which it forgets by that.
    cudaError_t cudaGetLastError();

    // The launch path. A configuration is pushed by the caller of a kernel and taken by its launcher.
    cudaError_t cudaPushCallConfiguration(dim3 grid, dim3 block, std::size_t sharedBytes,
                                          cudaStream_t stream);
    cudaError_t cudaPopCallConfiguration(dim3* grid, dim3* block, std::size_t* sharedBytes,
                                         cudaStream_t* stream);
    /// `function` is the key under which the kernel was registered. An error of the launch itself is returned
    /// and recorded; what goes wrong in the kernel shows at the next synchronisation.
    cudaError_t cudaLaunchKernel(const void* function, dim3 grid, dim3 block, void** arguments,
                                 std::size_t sharedBytes, cudaStream_t stream);

    // Registration of device code, at load. The texts must live until the code is unregistered.
    struct FatBinary {
        const char* image; ///< PTX text
        struct Function {
            const void* key;
            const char* name;
            int threadLimit; ///< -1: none
        };
        std::vector<Function> functions;
        bool complete = false;
    };
    FatBinary* cudaRegisterFatBinary(const char* image);
    void cudaRegisterFunction(FatBinary* binary, const void* key, const char* name, int threadLimit);
    void cudaRegisterFatBinaryEnd(FatBinary* binary);
    void cudaUnregisterFatBinary(FatBinary* binary);
    /// What is registered, in the order of registration.
    [[nodiscard]] const std::vector<std::unique_ptr<FatBinary>>& fatBinaries() const { return fatBinaries_; }

private:
    struct CallConfiguration {
        dim3 grid, block;
        std::size_t sharedBytes;
        cudaStream_t stream;
    };
    struct ThreadState {
        int device = 0;
        cudaError_t lastError = cudaSuccess;
        std::vector<CallConfiguration> configurations;
    };
    /// What stands in a device's primary context.
    struct DeviceState {
        cuda::CUcontext context = nullptr;
        std::map<const FatBinary*, cuda::CUmodule> modules;
        std::map<const void*, cuda::CUfunction> functions;
    };

    [[nodiscard]] ThreadState& thread() const;
    cudaError_t record(cudaError_t error) const;
    [[nodiscard]] cudaError_t loadDriver();
    [[nodiscard]] cudaError_t initialise();
    [[nodiscard]] cudaError_t findDevice(int device, cuda::CUdevice& handle);
    [[nodiscard]] cudaError_t enterContext();
    [[nodiscard]] cudaError_t findFunction(const void* key, cuda::CUfunction& function);

    const LoaderOf loader_;
    const std::string driverLibrary_;
    const std::uint64_t serial_; ///< tells the states of a thread apart
    cuda::CudaDriverCalls driver_;
    bool driverLoaded_ = false;
    bool driverTried_ = false;
    bool initialised_ = false;
    std::map<int, DeviceState> devices_;
    std::vector<std::unique_ptr<FatBinary>> fatBinaries_;
    std::mutex mutex_; ///< guards everything above
};

} // namespace vexil::module::video_card
