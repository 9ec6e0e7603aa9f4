#pragma once

#include "module/video_card/cuda/cuda_driver_api.h"

#include <cstddef>

// The runtime's types, under the names of its documentation, with what the module uses of each.
namespace vexil::module::video_card {

/// Values are those of the driver's results, which a call passes on as they come.
enum cudaError_t : int {
    cudaSuccess = 0,
    cudaErrorInvalidValue = 1,
    cudaErrorInsufficientDriver = 35,
    cudaErrorMissingConfiguration = 52,
    cudaErrorInvalidDeviceFunction = 98,
    cudaErrorInvalidDevice = 101,
};

enum cudaMemcpyKind : int {
    cudaMemcpyHostToDevice = 1,
    cudaMemcpyDeviceToHost = 2,
    cudaMemcpyDeviceToDevice = 3
};

struct cudaDeviceProp {
    std::size_t totalGlobalMem = 0; ///< bytes
};

struct dim3 {
    unsigned x = 1, y = 1, z = 1;
};

/// Null is the default stream, the only one in use.
using cudaStream_t = cuda::CUstream;

} // namespace vexil::module::video_card
