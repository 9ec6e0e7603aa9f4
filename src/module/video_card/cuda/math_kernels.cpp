#include "module/video_card/cuda/math_kernels.h"

#include "module/video_card/cuda/device_code.h"
#include "module/video_card/cuda/kernels/kernels.h"

namespace vexil::module::video_card {

namespace {

constexpr char ptx[] =
#include "math_operation_kernels.ptx.inc"
    ;

constexpr Kernel<decltype(kernels::cuda_kernel_advanced_execute_integer)>
    advancedInteger("cuda_kernel_advanced_execute_integer");
constexpr Kernel<decltype(kernels::cuda_kernel_standard_execute_integer)>
    standardInteger("cuda_kernel_standard_execute_integer");
constexpr Kernel<decltype(kernels::cuda_kernel_advanced_execute_float)>
    advancedFloat("cuda_kernel_advanced_execute_float");
constexpr Kernel<decltype(kernels::cuda_kernel_standard_execute_float)>
    standardFloat("cuda_kernel_standard_execute_float");
VEXIL_FAT_BINARY(6)
const DeviceCode deviceCode(ptx, {&advancedInteger, &standardInteger, &advancedFloat, &standardFloat});

} // namespace

void launchMathKernel(bool advanced, unsigned operations, unsigned values, const std::int32_t* a,
                      const std::int32_t* b, const std::int32_t* c, std::int32_t* out) {
    (advanced ? advancedInteger : standardInteger).run(operations, values, a, b, c, out);
}

void launchMathKernel(bool advanced, unsigned operations, unsigned values, const float* a, const float* b,
                      const float* c, float* out) {
    (advanced ? advancedFloat : standardFloat).run(operations, values, a, b, c, out);
}

} // namespace vexil::module::video_card
