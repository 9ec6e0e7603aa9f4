#include "module/video_card/cuda/cuda_block_move_test.h"

#include "module/video_card/cuda/device_code.h"
#include "module/video_card/cuda/kernels/kernels.h"

#include <array>

namespace vexil::module::video_card {

namespace {

constexpr char ptx[] =
#include "block_move_kernels.ptx.inc"
    ;

constexpr Kernel<decltype(kernels::block_move_kernel_check)> check("block_move_kernel_check");
constexpr Kernel<decltype(kernels::block_move_kernel_move)> move("block_move_kernel_move");
constexpr Kernel<decltype(kernels::block_move_kernel_init)> init("block_move_kernel_init");
VEXIL_FAT_BINARY(1) const DeviceCode deviceCode(ptx, {&check, &move, &init});

enum class Action : std::uint8_t { Init, Move, Check };

struct Pass {
    Action action;
    SweepPass sweep;
};

// 33 percent each: the sweep stays at or below 99 until the run is over.
constexpr std::array passes = {
    Pass{Action::Init, {.progressBase = 0, .step = 528, .readsFlag = false}},
    Pass{Action::Move, {.progressBase = 33, .step = 528, .readsFlag = false}},
    Pass{Action::Check,
         {.progressBase = 66, .step = 528, .readsFlag = true, .leave = LeaveOnMismatch::AfterLaunch}},
};
static_assert(passes.size() == 3);

} // namespace

CUDABlockMoveTest::CUDABlockMoveTest() : CudaAbstractTest(14) {}

std::uint8_t CUDABlockMoveTest::runBody(const core::TestRunArguments& arguments) {
    return runPasses(arguments, passes, [&](const Pass& pass, std::uint8_t* base) {
        switch (pass.action) {
        case Action::Init:
            init(blocks, chunkBytes, base, memoryEnd_);
            break;
        case Action::Move:
            move(blocks, chunkBytes, base, memoryEnd_);
            break;
        case Action::Check:
            check(blocks, chunkBytes, base, memoryEnd_, devicePatternOk_);
            break;
        }
    });
}

} // namespace vexil::module::video_card
