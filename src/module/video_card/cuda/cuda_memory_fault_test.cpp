#include "module/video_card/cuda/cuda_memory_fault_test.h"

#include "module/video_card/cuda/device_code.h"
#include "module/video_card/cuda/kernels/kernels.h"

#include <array>

namespace vexil::module::video_card {

namespace {

constexpr char ptx[] =
#include "memory_fault_kernels.ptx.inc"
    ;

constexpr Kernel<decltype(kernels::memory_fault_kernel_check)> check("memory_fault_kernel_check");
constexpr Kernel<decltype(kernels::memory_fault_kernel_check_write)>
    checkWrite("memory_fault_kernel_check_write");
constexpr Kernel<decltype(kernels::memory_fault_kernel_write)> write("memory_fault_kernel_write");
VEXIL_FAT_BINARY(2) const DeviceCode deviceCode(ptx, {&check, &checkWrite, &write});

enum class Action : std::uint8_t { Write, CheckWrite, Check };

struct Pass {
    Action action;
    bool ascending;
    std::uint32_t expected; ///< unused by a write
    std::uint32_t next;     ///< unused by a check
    SweepPass sweep;
};

constexpr SweepPass writing(std::uint32_t base, std::uint32_t step) { return {base, step, false}; }
constexpr SweepPass checking(std::uint32_t base, std::uint32_t step, LeaveOnMismatch leave) {
    return {base, step, true, leave};
}

constexpr auto after = LeaveOnMismatch::AfterLaunch;
constexpr auto around = LeaveOnMismatch::AroundLaunch;

// clang-format off
constexpr std::array passes = {
    Pass{Action::Write,      true,  0x00000000, 0x00000000, writing(0, 160)},
    Pass{Action::CheckWrite, true,  0x00000000, 0xFFFFFFFF, checking(10, 320, after)},
    Pass{Action::CheckWrite, true,  0xFFFFFFFF, 0x00000000, checking(30, 320, around)},
    Pass{Action::CheckWrite, false, 0x00000000, 0xFFFFFFFF, checking(50, 320, around)},
    Pass{Action::CheckWrite, false, 0xFFFFFFFF, 0x00000000, checking(70, 320, around)},
    Pass{Action::Check,      false, 0x00000000, 0x00000000, checking(90, 160, around)},
};
// clang-format on
static_assert(passes.size() == 6);

} // namespace

CUDAMemoryFaultTest::CUDAMemoryFaultTest() : CudaAbstractTest(11) {}

std::uint8_t CUDAMemoryFaultTest::runBody(const core::TestRunArguments& arguments) {
    return runPasses(arguments, passes, [&](const Pass& pass, std::uint8_t* base) {
        switch (pass.action) {
        case Action::Write:
            write(blocks, chunkBytes, base, memoryEnd_, pass.ascending, pass.next);
            break;
        case Action::CheckWrite:
            checkWrite(blocks, chunkBytes, base, memoryEnd_, pass.ascending, pass.expected, pass.next,
                       devicePatternOk_);
            break;
        case Action::Check:
            check(blocks, chunkBytes, base, memoryEnd_, pass.ascending, pass.expected, devicePatternOk_);
            break;
        }
    });
}

} // namespace vexil::module::video_card
