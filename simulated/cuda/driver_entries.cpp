// The C interface of the CUDA driver, over the simulated one.
#include "core/shared_api.h"
#include "module/video_card/cuda/cuda_driver_api.h"
#include "simulated/cuda/simulated_driver.h"

#include <cstring>

using namespace vexil::cuda;
using vexil::simulated::cuda::Control;
using vexil::simulated::cuda::SimulatedCard;
using vexil::simulated::cuda::SimulatedDriver;

namespace {

SimulatedDriver& entered(const char* call) {
    SimulatedDriver& driver = SimulatedDriver::instance();
    driver.enter(call);
    return driver;
}

/// Does something on the card of the thread's context.
template <typename Operation>
CUresult onCurrent(const char* call, Operation&& operation) {
    SimulatedCard* const card = entered(call).current();
    return card == nullptr ? CUDA_ERROR_INVALID_CONTEXT : operation(*card);
}

} // namespace

extern "C" {

VEXIL_SHARED_API Control* vexil_simulated_cuda_control() { return &SimulatedDriver::instance(); }

VEXIL_SHARED_API CUresult cuInit(unsigned) { return entered("cuInit").initialisation(); }

VEXIL_SHARED_API CUresult cuDriverGetVersion(int* version) {
    *version = entered("cuDriverGetVersion").version();
    return CUDA_SUCCESS;
}

VEXIL_SHARED_API CUresult cuDeviceGetCount(int* count) {
    *count = entered("cuDeviceGetCount").count();
    return CUDA_SUCCESS;
}

VEXIL_SHARED_API CUresult cuDeviceGet(CUdevice* device, int ordinal) {
    if (entered("cuDeviceGet").card(ordinal) == nullptr) {
        return CUDA_ERROR_INVALID_DEVICE;
    }
    *device = ordinal;
    return CUDA_SUCCESS;
}

VEXIL_SHARED_API CUresult cuDeviceGetPCIBusId(char* text, int length, CUdevice device) {
    const SimulatedCard* const card = entered("cuDeviceGetPCIBusId").card(device);
    if (card == nullptr) {
        return CUDA_ERROR_INVALID_DEVICE;
    }
    const auto& busId = card->section().pciBusId;
    if (text == nullptr || length <= static_cast<int>(busId.size())) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    std::memcpy(text, busId.c_str(), busId.size() + 1);
    return CUDA_SUCCESS;
}

VEXIL_SHARED_API CUresult cuDeviceTotalMem_v2(std::size_t* bytes, CUdevice device) {
    const SimulatedCard* const card = entered("cuDeviceTotalMem_v2").card(device);
    if (card == nullptr) {
        return CUDA_ERROR_INVALID_DEVICE;
    }
    *bytes = card->totalBytes();
    return CUDA_SUCCESS;
}

VEXIL_SHARED_API CUresult cuDevicePrimaryCtxRetain(CUcontext* context, CUdevice device) {
    return entered("cuDevicePrimaryCtxRetain").retain(device, context);
}

VEXIL_SHARED_API CUresult cuDevicePrimaryCtxRelease_v2(CUdevice device) {
    return entered("cuDevicePrimaryCtxRelease_v2").release(device);
}

VEXIL_SHARED_API CUresult cuDevicePrimaryCtxReset_v2(CUdevice device) {
    return entered("cuDevicePrimaryCtxReset_v2").reset(device);
}

VEXIL_SHARED_API CUresult cuCtxSetCurrent(CUcontext context) {
    return entered("cuCtxSetCurrent").setCurrent(context);
}

// Kernels run inside the launch.
VEXIL_SHARED_API CUresult cuCtxSynchronize() {
    return onCurrent("cuCtxSynchronize", [](SimulatedCard&) { return CUDA_SUCCESS; });
}

VEXIL_SHARED_API CUresult cuMemGetInfo_v2(std::size_t* freeBytes, std::size_t* totalBytes) {
    return onCurrent("cuMemGetInfo_v2",
                     [&](SimulatedCard& card) { return card.memGetInfo(freeBytes, totalBytes); });
}

VEXIL_SHARED_API CUresult cuMemAlloc_v2(CUdeviceptr* memory, std::size_t bytes) {
    return onCurrent("cuMemAlloc_v2", [&](SimulatedCard& card) { return card.memAlloc(memory, bytes); });
}

VEXIL_SHARED_API CUresult cuMemFree_v2(CUdeviceptr memory) {
    return onCurrent("cuMemFree_v2", [&](SimulatedCard& card) { return card.memFree(memory); });
}

VEXIL_SHARED_API CUresult cuMemcpyHtoD_v2(CUdeviceptr to, const void* from, std::size_t bytes) {
    return onCurrent("cuMemcpyHtoD_v2",
                     [&](SimulatedCard& card) { return card.copyToCard(to, from, bytes); });
}

VEXIL_SHARED_API CUresult cuMemcpyDtoH_v2(void* to, CUdeviceptr from, std::size_t bytes) {
    return onCurrent("cuMemcpyDtoH_v2",
                     [&](SimulatedCard& card) { return card.copyFromCard(to, from, bytes); });
}

VEXIL_SHARED_API CUresult cuMemcpyDtoD_v2(CUdeviceptr to, CUdeviceptr from, std::size_t bytes) {
    return onCurrent("cuMemcpyDtoD_v2",
                     [&](SimulatedCard& card) { return card.copyOnCard(to, from, bytes); });
}

VEXIL_SHARED_API CUresult cuMemsetD32_v2(CUdeviceptr to, unsigned value, std::size_t words) {
    return onCurrent("cuMemsetD32_v2", [&](SimulatedCard& card) { return card.setWords(to, value, words); });
}

VEXIL_SHARED_API CUresult cuModuleLoadData(CUmodule* module, const void* image) {
    return onCurrent("cuModuleLoadData", [&](SimulatedCard& card) { return card.loadModule(module, image); });
}

VEXIL_SHARED_API CUresult cuModuleUnload(CUmodule module) {
    return onCurrent("cuModuleUnload", [&](SimulatedCard& card) { return card.unloadModule(module); });
}

VEXIL_SHARED_API CUresult cuModuleGetFunction(CUfunction* function, CUmodule module, const char* name) {
    return onCurrent("cuModuleGetFunction",
                     [&](SimulatedCard& card) { return card.getFunction(function, module, name); });
}

VEXIL_SHARED_API CUresult cuLaunchKernel(CUfunction function, unsigned gridX, unsigned gridY, unsigned gridZ,
                                         unsigned blockX, unsigned blockY, unsigned blockZ,
                                         unsigned sharedBytes, CUstream stream, void** arguments,
                                         void** extra) {
    return onCurrent("cuLaunchKernel", [&](SimulatedCard& card) {
        SimulatedDriver::instance().enter({card.kernelName(function),
                                           {gridX, gridY, gridZ},
                                           {blockX, blockY, blockZ},
                                           sharedBytes,
                                           stream == nullptr,
                                           arguments});
        if (gridY != 1 || gridZ != 1 || blockY != 1 || blockZ != 1 || extra != nullptr) {
            return CUDA_ERROR_INVALID_VALUE;
        }
        return card.launch(function, gridX, blockX, arguments);
    });
}
}
