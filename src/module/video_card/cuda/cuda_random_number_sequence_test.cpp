#include "module/video_card/cuda/cuda_random_number_sequence_test.h"

#include "module/video_card/cuda/cuda_runtime.h"
#include "module/video_card/cuda/device_code.h"
#include "module/video_card/cuda/kernels/kernels.h"
#include "module/video_card/cuda/random_words.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vexil::module::video_card {

namespace {

constexpr char ptx[] =
#include "random_sequence_kernels.ptx.inc"
    ;

constexpr Kernel<decltype(kernels::RandomNumberSequenceKernelCheck)> check("RandomNumberSequenceKernelCheck");
constexpr Kernel<decltype(kernels::RandomNumberSequenceKernelCheckWrite)>
    checkWrite("RandomNumberSequenceKernelCheckWrite");
constexpr Kernel<decltype(kernels::RandomNumberSequenceKernelWrite)> write("RandomNumberSequenceKernelWrite");
VEXIL_FAT_BINARY(5) const DeviceCode deviceCode(ptx, {&check, &checkWrite, &write});

enum class Action : std::uint8_t { Write, CheckWrite, Check };

struct Pass {
    Action action;
    SweepPass sweep;
};

/// The sweep starts behind the reference, one MiB into the block, and so does the accumulator: at 33 percent
/// of one.
constexpr SweepPass behindReference(std::uint32_t base, bool readsFlag, LeaveOnMismatch leave) {
    return {.progressBase = base,
            .step = 528,
            .readsFlag = readsFlag,
            .leave = leave,
            .firstMiB = 1,
            .accumulatorStart = 33,
            .errorOrder = CommunicationErrorOrder::ProgressFirst};
}

constexpr std::array passes = {
    Pass{Action::Write, behindReference(0, false, LeaveOnMismatch::Never)},
    Pass{Action::CheckWrite, behindReference(33, true, LeaveOnMismatch::AfterLaunch)},
    Pass{Action::Check, behindReference(66, true, LeaveOnMismatch::AroundLaunch)},
};
static_assert(passes.size() == 3);

} // namespace

CudaRandomNumberSequenceTest::CudaRandomNumberSequenceTest() : CudaAbstractTest(15) {}

std::uint8_t CudaRandomNumberSequenceTest::runBody(const core::TestRunArguments& arguments) {
    const auto device = arguments.device.lock(); // held for the whole body
    std::vector<std::uint32_t> words(chunkBytes / sizeof(std::uint32_t));
    RandomWords random;
    std::ranges::generate(words, [&] { return random.next(); });

    std::uint8_t* const reference = memoryBegin_;
    if (CudaRuntime::instance().cudaMemcpy(reference, words.data(), chunkBytes, cudaMemcpyHostToDevice) !=
        cudaSuccess) {
        return finishWithoutCommunication(arguments, CommunicationErrorOrder::ProgressFirst);
    }

    return runPasses(arguments, passes, [&](const Pass& pass, std::uint8_t* base) {
        switch (pass.action) {
        case Action::Write:
            write(blocks, chunkBytes, base, memoryEnd_, reference);
            break;
        case Action::CheckWrite:
            checkWrite(blocks, chunkBytes, base, memoryEnd_, reference, devicePatternOk_);
            break;
        case Action::Check:
            check(blocks, chunkBytes, base, memoryEnd_, reference, devicePatternOk_);
            break;
        }
    });
}

} // namespace vexil::module::video_card
