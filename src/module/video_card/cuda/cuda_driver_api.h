#pragma once

#include <cstddef>

// The part of the CUDA driver's C interface that the module calls, under the names of its documentation.
// Values are those of the platform's binary interface. On 64-bit systems the driver's calling convention is
// the usual one.
namespace vexil::cuda {

using CUresult = int;
using CUdevice = int;
using CUdeviceptr = unsigned long long;
using CUcontext = struct CUctx_st*;
using CUmodule = struct CUmod_st*;
using CUfunction = struct CUfunc_st*;
using CUstream = struct CUstream_st*;

inline constexpr CUresult CUDA_SUCCESS = 0;
inline constexpr CUresult CUDA_ERROR_INVALID_VALUE = 1;
inline constexpr CUresult CUDA_ERROR_OUT_OF_MEMORY = 2;
inline constexpr CUresult CUDA_ERROR_NO_DEVICE = 100;
inline constexpr CUresult CUDA_ERROR_INVALID_DEVICE = 101;
inline constexpr CUresult CUDA_ERROR_INVALID_CONTEXT = 201;
inline constexpr CUresult CUDA_ERROR_INVALID_PTX = 218;
inline constexpr CUresult CUDA_ERROR_INVALID_HANDLE = 400;
inline constexpr CUresult CUDA_ERROR_NOT_FOUND = 500;
inline constexpr CUresult CUDA_ERROR_LAUNCH_OUT_OF_RESOURCES = 701;
inline constexpr CUresult CUDA_ERROR_UNKNOWN = 999;

/// The driver's entry points. One that a driver lacks is null; each user checks before it calls.
struct CudaDriverCalls {
    CUresult (*cuInit)(unsigned flags) = nullptr;
    CUresult (*cuDriverGetVersion)(int* version) = nullptr;
    CUresult (*cuDeviceGetCount)(int* count) = nullptr;
    CUresult (*cuDeviceGet)(CUdevice* device, int ordinal) = nullptr;
    CUresult (*cuDeviceGetPCIBusId)(char* text, int length, CUdevice device) = nullptr;
    CUresult (*cuDeviceTotalMem)(std::size_t* bytes, CUdevice device) = nullptr;
    CUresult (*cuDevicePrimaryCtxRetain)(CUcontext* context, CUdevice device) = nullptr;
    CUresult (*cuDevicePrimaryCtxRelease)(CUdevice device) = nullptr;
    CUresult (*cuDevicePrimaryCtxReset)(CUdevice device) = nullptr;
    CUresult (*cuCtxSetCurrent)(CUcontext context) = nullptr;
    CUresult (*cuCtxSynchronize)() = nullptr;
    CUresult (*cuMemGetInfo)(std::size_t* free, std::size_t* total) = nullptr;
    CUresult (*cuMemAlloc)(CUdeviceptr* memory, std::size_t bytes) = nullptr;
    CUresult (*cuMemFree)(CUdeviceptr memory) = nullptr;
    CUresult (*cuMemcpyHtoD)(CUdeviceptr to, const void* from, std::size_t bytes) = nullptr;
    CUresult (*cuMemcpyDtoH)(void* to, CUdeviceptr from, std::size_t bytes) = nullptr;
    CUresult (*cuMemcpyDtoD)(CUdeviceptr to, CUdeviceptr from, std::size_t bytes) = nullptr;
    CUresult (*cuMemsetD32)(CUdeviceptr to, unsigned value, std::size_t words) = nullptr;
    CUresult (*cuModuleLoadData)(CUmodule* module, const void* image) = nullptr;
    CUresult (*cuModuleUnload)(CUmodule module) = nullptr;
    CUresult (*cuModuleGetFunction)(CUfunction* function, CUmodule module, const char* name) = nullptr;
    CUresult (*cuLaunchKernel)(CUfunction function, unsigned gridX, unsigned gridY, unsigned gridZ,
                               unsigned blockX, unsigned blockY, unsigned blockZ, unsigned sharedBytes,
                               CUstream stream, void** arguments, void** extra) = nullptr;
};

/// Calls `visit(entry, symbol)` for each entry point with the name under which the driver exports it. The
/// suffix is the version of the call whose signature stands above.
template <typename Calls, typename Visit>
void forEachDriverCall(Calls& calls, Visit&& visit) {
    visit(calls.cuInit, "cuInit");
    visit(calls.cuDriverGetVersion, "cuDriverGetVersion");
    visit(calls.cuDeviceGetCount, "cuDeviceGetCount");
    visit(calls.cuDeviceGet, "cuDeviceGet");
    visit(calls.cuDeviceGetPCIBusId, "cuDeviceGetPCIBusId");
    visit(calls.cuDeviceTotalMem, "cuDeviceTotalMem_v2");
    visit(calls.cuDevicePrimaryCtxRetain, "cuDevicePrimaryCtxRetain");
    visit(calls.cuDevicePrimaryCtxRelease, "cuDevicePrimaryCtxRelease_v2");
    visit(calls.cuDevicePrimaryCtxReset, "cuDevicePrimaryCtxReset_v2");
    visit(calls.cuCtxSetCurrent, "cuCtxSetCurrent");
    visit(calls.cuCtxSynchronize, "cuCtxSynchronize");
    visit(calls.cuMemGetInfo, "cuMemGetInfo_v2");
    visit(calls.cuMemAlloc, "cuMemAlloc_v2");
    visit(calls.cuMemFree, "cuMemFree_v2");
    visit(calls.cuMemcpyHtoD, "cuMemcpyHtoD_v2");
    visit(calls.cuMemcpyDtoH, "cuMemcpyDtoH_v2");
    visit(calls.cuMemcpyDtoD, "cuMemcpyDtoD_v2");
    visit(calls.cuMemsetD32, "cuMemsetD32_v2");
    visit(calls.cuModuleLoadData, "cuModuleLoadData");
    visit(calls.cuModuleUnload, "cuModuleUnload");
    visit(calls.cuModuleGetFunction, "cuModuleGetFunction");
    visit(calls.cuLaunchKernel, "cuLaunchKernel");
}

} // namespace vexil::cuda
