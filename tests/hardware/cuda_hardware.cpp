// Runs the CUDA tests on a real card, without Qt and without a toolkit, and measures them.
//
//   vexil_cuda_hardware [--device N] [--mib N] [--tune]
//
//   --device  CUDA's number of the card, 0 if not given
//   --mib     size of the block to sweep; without it the tests take what they take on this card
//   --tune    measures other settings of the kernels as well
//
// Ends with 0 if every test passed and every kernel did what the plain walk does.
#include "kernel_comparison.h"
#include "kernel_timing.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "timed_tests.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace vexil;
using namespace vexil::module::video_card;

namespace {

/// Enough to leave every cache behind, and fast even where a pass is slow.
constexpr std::uint32_t timedMiB = 1024;
constexpr std::uint32_t tunedMiB = 256;

struct Options {
    std::int32_t device = 0;
    std::uint32_t mostMiB = 0;
    bool tune = false;
};

bool parse(int count, char** words, Options& options) {
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--tune") {
            options.tune = true;
        } else if (word == "--device" && i + 1 < count) {
            options.device = std::atoi(words[++i]);
        } else if (word == "--mib" && i + 1 < count) {
            options.mostMiB = static_cast<std::uint32_t>(std::atoi(words[++i]));
        } else {
            return false;
        }
    }
    return true;
}

bool describe(std::int32_t device) {
    CudaRuntime& cuda = CudaRuntime::instance();
    int version = 0, count = 0;
    cuda.cudaDriverGetVersion(&version);
    cuda.cudaGetDeviceCount(&count);
    std::printf("driver %d.%d, %d cards\n", version / 1000, version % 1000 / 10, count);
    for (int i = 0; i < count; ++i) {
        char location[13] = "?";
        cudaDeviceProp properties;
        cuda.cudaDeviceGetPCIBusId(location, sizeof location, i);
        cuda.cudaGetDeviceProperties(&properties, i);
        std::printf("%s card %d at %s, %zu MiB\n", i == device ? "*" : " ", i, location,
                    properties.totalGlobalMem >> 20);
    }
    return device < count;
}

} // namespace

int main(int count, char** words) {
    std::setvbuf(stdout, nullptr, _IOLBF, 1 << 12);
    Options options;
    if (!parse(count, words, options)) {
        std::fprintf(stderr, "usage: %s [--device N] [--mib N] [--tune]\n", words[0]);
        return 2;
    }
    if (!describe(options.device)) {
        std::printf("there is no such card on this machine\n");
        return 2;
    }
    std::printf("\nkernels against the plain walk, 20 MiB\n");
    int failures = hardware::compareKernels(options.device);
    std::printf("\n");
    hardware::timeKernels(options.device,
                          options.mostMiB == 0 ? timedMiB : std::min(options.mostMiB, timedMiB));
    std::printf("\nthe tests\n");
    failures += hardware::runTimedTests(options.device, options.mostMiB);
    if (options.tune) {
        std::printf("\nother settings of the kernels, %u MiB\n", tunedMiB);
        hardware::timeVariants(options.device, tunedMiB);
    }
    std::printf("\n%s\n", failures == 0 ? "all passed" : "FAILED");
    return failures == 0 ? 0 : 1;
}
