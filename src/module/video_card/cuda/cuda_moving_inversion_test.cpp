#include "module/video_card/cuda/cuda_moving_inversion_test.h"

#include "module/video_card/cuda/device_code.h"
#include "module/video_card/cuda/kernels/kernels.h"

#include <array>

namespace vexil::module::video_card {

namespace {

constexpr char ptx[] =
#include "moving_inversion_kernels.ptx.inc"
    ;

constexpr Kernel<decltype(kernels::moving_inversion_kernel_check)> check("moving_inversion_kernel_check");
constexpr Kernel<decltype(kernels::moving_inversion_kernel_check_write)>
    checkWrite("moving_inversion_kernel_check_write");
constexpr Kernel<decltype(kernels::moving_inversion_kernel_write)> write("moving_inversion_kernel_write");
VEXIL_FAT_BINARY(4) const DeviceCode deviceCode(ptx, {&check, &checkWrite, &write});

enum class Action : std::uint8_t { Write, CheckWrite, Check };

struct Pass {
    Action action;
    std::uint32_t expected; ///< unused by the write
    std::uint32_t next;     ///< unused by the check
    SweepPass sweep;
};

constexpr std::uint32_t pattern = 0x80808080;

// clang-format off
constexpr std::array passes = {
    Pass{Action::Write,      0,        pattern,  {.progressBase = 0,  .step = 400, .readsFlag = false}},
    Pass{Action::CheckWrite, pattern,  ~pattern, {.progressBase = 25, .step = 800, .readsFlag = true, .leave = LeaveOnMismatch::AfterLaunch}},
    Pass{Action::Check,      ~pattern, 0,        {.progressBase = 75, .step = 400, .readsFlag = true, .leave = LeaveOnMismatch::AroundLaunch}},
};
// clang-format on
static_assert(passes.size() == 3);

} // namespace

CUDAMovingInversionTest::CUDAMovingInversionTest() : CudaAbstractTest(13) {}

std::uint8_t CUDAMovingInversionTest::runBody(const core::TestRunArguments& arguments) {
    return runPasses(arguments, passes, [&](const Pass& pass, std::uint8_t* base) {
        switch (pass.action) {
        case Action::Write:
            write(blocks, chunkBytes, base, memoryEnd_, pass.next);
            break;
        case Action::CheckWrite:
            checkWrite(blocks, chunkBytes, base, memoryEnd_, pass.expected, pass.next, devicePatternOk_);
            break;
        case Action::Check:
            check(blocks, chunkBytes, base, memoryEnd_, pass.expected, devicePatternOk_);
            break;
        }
    });
}

} // namespace vexil::module::video_card
