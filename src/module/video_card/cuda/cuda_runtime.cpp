#include "module/video_card/cuda/cuda_runtime.h"

#include "platform/library_names.h"
#include "system/win_module.h"

#include <atomic>
#include <type_traits>
#include <utility>

namespace vexil::module::video_card {

using namespace cuda;

namespace {

std::atomic<std::uint64_t> nextSerial = 1;

CUdeviceptr address(const void* memory) { return reinterpret_cast<CUdeviceptr>(memory); }

/// Calls an entry point of the driver if it is there.
template <typename... Parameters, typename... Arguments>
cudaError_t call(CUresult (*entry)(Parameters...), Arguments... arguments) {
    return entry == nullptr ? cudaErrorInsufficientDriver : static_cast<cudaError_t>(entry(arguments...));
}

} // namespace

CudaRuntime::CudaRuntime(LoaderOf loader, std::string driverLibrary)
    : loader_(loader), driverLibrary_(std::move(driverLibrary)), serial_(nextSerial++) {}

CudaRuntime::~CudaRuntime() = default;

CudaRuntime& CudaRuntime::instance() {
    static CudaRuntime runtime(&getModule, platform::cudaDriverLibrary());
    return runtime;
}

cudaError_t CudaRuntime::loadDriver() {
    if (!driverTried_) {
        driverTried_ = true;
        ::Module* const loader = loader_();
        if (void* const library = system::loadedOrFound(*loader, driverLibrary_)) {
            driverLoaded_ = true;
            forEachDriverCall(driver_, [&](auto& entry, const char* symbol) {
                entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(
                    loader->resolve(library, symbol));
            });
        }
    }
    return driverLoaded_ ? cudaSuccess : cudaErrorInsufficientDriver;
}

cudaError_t CudaRuntime::initialise() {
    const std::lock_guard lock(mutex_);
    if (const cudaError_t error = loadDriver(); error != cudaSuccess) {
        return error;
    }
    // A driver that has no device yet is asked again; one that has been initialised is not.
    if (!initialised_) {
        if (const cudaError_t error = call(driver_.cuInit, 0u); error != cudaSuccess) {
            return error;
        }
        initialised_ = true;
    }
    return cudaSuccess;
}

cudaError_t CudaRuntime::findDevice(int device, CUdevice& handle) {
    const cudaError_t error = initialise();
    return error != cudaSuccess ? error : call(driver_.cuDeviceGet, &handle, device);
}

cudaError_t CudaRuntime::enterContext() {
    if (const cudaError_t error = initialise(); error != cudaSuccess) {
        return error;
    }
    const int device = thread().device;
    const std::lock_guard lock(mutex_);
    DeviceState& state = devices_[device];
    if (state.context == nullptr) {
        CUdevice handle = 0;
        if (const cudaError_t error = call(driver_.cuDeviceGet, &handle, device); error != cudaSuccess) {
            return error;
        }
        const cudaError_t error = call(driver_.cuDevicePrimaryCtxRetain, &state.context, handle);
        if (error != cudaSuccess) {
            state.context = nullptr;
            return error;
        }
    }
    return call(driver_.cuCtxSetCurrent, state.context);
}

cudaError_t CudaRuntime::cudaDriverGetVersion(int* version) {
    *version = 0;
    const std::lock_guard lock(mutex_);
    if (loadDriver() != cudaSuccess) {
        return cudaSuccess;
    }
    return record(call(driver_.cuDriverGetVersion, version));
}

cudaError_t CudaRuntime::cudaGetDeviceCount(int* count) {
    *count = 0;
    const cudaError_t error = initialise();
    return record(error != cudaSuccess ? error : call(driver_.cuDeviceGetCount, count));
}

cudaError_t CudaRuntime::cudaDeviceGetPCIBusId(char* text, int length, int device) {
    CUdevice handle = 0;
    cudaError_t error = findDevice(device, handle);
    if (error == cudaSuccess) {
        error = call(driver_.cuDeviceGetPCIBusId, text, length, handle);
    }
    return record(error);
}

cudaError_t CudaRuntime::cudaGetDeviceProperties(cudaDeviceProp* properties, int device) {
    CUdevice handle = 0;
    cudaError_t error = findDevice(device, handle);
    if (error == cudaSuccess) {
        error = call(driver_.cuDeviceTotalMem, &properties->totalGlobalMem, handle);
    }
    return record(error);
}

cudaError_t CudaRuntime::cudaSetDevice(int device) {
    CUdevice handle = 0;
    const cudaError_t error = findDevice(device, handle);
    if (error == cudaSuccess) {
        thread().device = device;
    }
    return record(error);
}

cudaError_t CudaRuntime::cudaMemGetInfo(std::size_t* freeBytes, std::size_t* totalBytes) {
    const cudaError_t error = enterContext();
    return record(error != cudaSuccess ? error : call(driver_.cuMemGetInfo, freeBytes, totalBytes));
}

cudaError_t CudaRuntime::cudaMalloc(void** memory, std::size_t bytes) {
    cudaError_t error = enterContext();
    CUdeviceptr allocated = 0;
    if (error == cudaSuccess && bytes != 0) {
        error = call(driver_.cuMemAlloc, &allocated, bytes);
    }
    if (error == cudaSuccess) {
        *memory = reinterpret_cast<void*>(allocated);
    }
    return record(error);
}

cudaError_t CudaRuntime::cudaFree(void* memory) {
    cudaError_t error = enterContext();
    if (error == cudaSuccess && memory != nullptr) {
        error = call(driver_.cuMemFree, address(memory));
    }
    return record(error);
}

cudaError_t CudaRuntime::cudaMemcpy(void* to, const void* from, std::size_t bytes, cudaMemcpyKind kind) {
    cudaError_t error = enterContext();
    if (error == cudaSuccess && bytes != 0) {
        switch (kind) {
        case cudaMemcpyHostToDevice:
            error = call(driver_.cuMemcpyHtoD, address(to), from, bytes);
            break;
        case cudaMemcpyDeviceToHost:
            error = call(driver_.cuMemcpyDtoH, to, address(from), bytes);
            break;
        case cudaMemcpyDeviceToDevice:
            error = call(driver_.cuMemcpyDtoD, address(to), address(from), bytes);
            break;
        default:
            error = cudaErrorInvalidValue;
            break;
        }
    }
    return record(error);
}

cudaError_t CudaRuntime::cudaDeviceSynchronize() {
    const cudaError_t error = enterContext();
    return record(error != cudaSuccess ? error : call(driver_.cuCtxSynchronize));
}

cudaError_t CudaRuntime::cudaDeviceReset() {
    if (const cudaError_t error = initialise(); error != cudaSuccess) {
        return record(error);
    }
    const int device = thread().device;
    const std::lock_guard lock(mutex_);
    CUdevice handle = 0;
    cudaError_t error = call(driver_.cuDeviceGet, &handle, device);
    if (error == cudaSuccess) {
        error = call(driver_.cuDevicePrimaryCtxReset, handle);
    }
    // A reset ends what stands in the context, but not the hold on it.
    if (const auto state = devices_.extract(device); !state.empty() && state.mapped().context != nullptr) {
        call(driver_.cuDevicePrimaryCtxRelease, handle);
    }
    return record(error);
}

} // namespace vexil::module::video_card
