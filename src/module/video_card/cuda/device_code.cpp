#include "module/video_card/cuda/device_code.h"

#include "module/video_card/cuda/cuda_runtime.h"

namespace vexil::module::video_card {

namespace {

constexpr int noThreadLimit = -1;

} // namespace

void KernelName::launch(unsigned blocks, unsigned threadsPerBlock, void** arguments) const {
    CudaRuntime& cuda = CudaRuntime::instance();
    if (cuda.cudaPushCallConfiguration({blocks}, {threadsPerBlock}, 0, nullptr) != cudaSuccess) {
        return;
    }
    dim3 grid, block;
    std::size_t sharedBytes = 0;
    cudaStream_t stream = nullptr;
    if (cuda.cudaPopCallConfiguration(&grid, &block, &sharedBytes, &stream) == cudaSuccess) {
        static_cast<void>(cuda.cudaLaunchKernel(this, grid, block, arguments, sharedBytes, stream));
    }
}

DeviceCode::DeviceCode(const char* ptx, std::initializer_list<const KernelName*> kernels) {
    CudaRuntime& cuda = CudaRuntime::instance();
    CudaRuntime::FatBinary* const binary = cuda.cudaRegisterFatBinary(ptx);
    for (const KernelName* kernel : kernels) {
        cuda.cudaRegisterFunction(binary, kernel, kernel->name(), noThreadLimit);
    }
    cuda.cudaRegisterFatBinaryEnd(binary);
    handle_ = binary;
}

DeviceCode::~DeviceCode() {
    CudaRuntime::instance().cudaUnregisterFatBinary(static_cast<CudaRuntime::FatBinary*>(handle_));
}

} // namespace vexil::module::video_card
