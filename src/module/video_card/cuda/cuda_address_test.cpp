#include "module/video_card/cuda/cuda_address_test.h"

#include "module/video_card/cuda/device_code.h"
#include "module/video_card/cuda/kernels/kernels.h"

#include <array>

namespace vexil::module::video_card {

namespace {

constexpr char ptx[] =
#include "address_kernels.ptx.inc"
    ;

constexpr Kernel<decltype(kernels::address_kernel_check)> check("address_kernel_check");
constexpr Kernel<decltype(kernels::address_kernel_write)> write("address_kernel_write");
VEXIL_FAT_BINARY(0) const DeviceCode deviceCode(ptx, {&check, &write});

enum class Action : std::uint8_t { Write, Check };

struct Pass {
    Action action;
    SweepPass sweep;
};

constexpr std::array passes = {
    Pass{Action::Write, {.progressBase = 0, .step = 800, .readsFlag = false}},
    Pass{Action::Check, {.progressBase = 50, .step = 800, .readsFlag = true}},
};
static_assert(passes.size() == 2);

} // namespace

CUDAAddressTest::CUDAAddressTest() : CudaAbstractTest(12) {}

std::uint8_t CUDAAddressTest::runBody(const core::TestRunArguments& arguments) {
    return runPasses(arguments, passes, [&](const Pass& pass, std::uint8_t* base) {
        if (pass.action == Action::Write) {
            write(blocks, chunkBytes, base, memoryEnd_);
        } else {
            check(blocks, chunkBytes, base, memoryEnd_, devicePatternOk_);
        }
    });
}

} // namespace vexil::module::video_card
