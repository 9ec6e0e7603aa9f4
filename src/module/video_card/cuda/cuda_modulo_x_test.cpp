#include "module/video_card/cuda/cuda_modulo_x_test.h"

#include "module/video_card/cuda/device_code.h"
#include "module/video_card/cuda/kernels/kernels.h"
#include "module/video_card/cuda/random_words.h"

namespace vexil::module::video_card {

namespace {

constexpr char ptx[] =
#include "modulo_x_kernels.ptx.inc"
    ;

constexpr Kernel<decltype(kernels::modulo_x_kernel_check)> check("modulo_x_kernel_check");
constexpr Kernel<decltype(kernels::modulo_x_kernel_write)> write("modulo_x_kernel_write");
VEXIL_FAT_BINARY(3) const DeviceCode deviceCode(ptx, {&check, &write});

constexpr std::uint32_t offsets = 20;

// Each offset is worth 5 percent, and each of its two passes half of that.
constexpr SweepPass writePass{.progressBase = 0, .step = 800, .readsFlag = false, .divisor = 20};
constexpr SweepPass checkPass{.progressBase = 0,
                              .step = 800,
                              .readsFlag = true,
                              .leave = LeaveOnMismatch::AfterLaunch,
                              .addend = 50,
                              .divisor = 20,
                              .errorOrder = CommunicationErrorOrder::ProgressFirst};

constexpr SweepPass passAt(SweepPass pass, std::uint32_t offset) {
    pass.progressBase = 5 * offset;
    return pass;
}

} // namespace

CudaModuloXTest::CudaModuloXTest() : CudaAbstractTest(16) {}

std::uint8_t CudaModuloXTest::runBody(const core::TestRunArguments& arguments) {
    const auto device = arguments.device.lock(); // held for the whole body
    RandomWords random;
    const std::uint32_t value = random.next();
    const std::uint32_t other = ~value;
    for (std::uint32_t offset = 0; offset < offsets; ++offset) {
        const auto launchWrite = [&](std::uint8_t* base) {
            write(blocks, chunkBytes, base, memoryEnd_, offset, value, other);
        };
        const auto launchCheck = [&](std::uint8_t* base) {
            check(blocks, chunkBytes, base, memoryEnd_, offset, value, devicePatternOk_);
        };
        if (const auto result = sweep(arguments, passAt(writePass, offset), launchWrite)) {
            return *result;
        }
        if (const auto result = sweep(arguments, passAt(checkPass, offset), launchCheck)) {
            return *result;
        }
        if (!patternOk_) {
            break;
        }
    }
    return finishBody(arguments);
}

} // namespace vexil::module::video_card
