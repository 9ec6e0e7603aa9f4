// How fast the simulated card sweeps a block with each kernel, against what the processor does at best: a
// memset of the block and a memcmp of its halves, in the same run. A kernel may take twice as long as those
// two together.
//
//   vexil_simulated_cuda_sweep [MIB]
//
// Ends with 1 if a kernel is slower than that.
#include "arguments.h"
#include "kernel_cases.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "platform/shared_library.h"
#include "registered_kernels.h"
#include "simulated/cuda/control.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <set>
#include <stdexcept>
#include <string>

namespace {

using namespace vexil;
using module::video_card::CudaRuntime;
using tests::plain_walk::Case;
using tests::plain_walk::list;
using tests::plain_walk::Word;

constexpr std::uint32_t chunkBytes = 1 << 20;
constexpr std::uint32_t blocks = 16;
constexpr int rounds = 5;

/// The best of some rounds: what else the machine does is no speed of the kernel.
template <typename Work>
double bestSeconds(Work&& work) {
    double best = 1e9;
    for (int round = 0; round < rounds; ++round) {
        const auto start = std::chrono::steady_clock::now();
        work();
        best =
            std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

struct Block {
    std::uint32_t mebibytes = 0;
    std::uint8_t *begin = nullptr, *reference = nullptr, *flag = nullptr;

    [[nodiscard]] std::size_t bytes() const { return std::size_t{mebibytes} << 20; }
};

bool allocate(Block& block) {
    void* const library = platform::openLibraryPath(VEXIL_SIMULATED_CUDA);
    if (library == nullptr) {
        return false;
    }
    simulated::CudaCardSection card;
    card.pciBusId = "0000:01:00.0";
    card.memoryBytes = block.bytes() + 2 * chunkBytes;
    reinterpret_cast<simulated::cuda::ControlFunction>(
        platform::librarySymbol(library, simulated::cuda::controlSymbol))()
        ->configure({12040, {card}});
    CudaRuntime& cuda = CudaRuntime::instance();
    return cuda.cudaMalloc(&block.begin, block.bytes()) == module::video_card::cudaSuccess &&
           cuda.cudaMalloc(&block.reference, chunkBytes) == module::video_card::cudaSuccess &&
           cuda.cudaMalloc(&block.flag, 1) == module::video_card::cudaSuccess;
}

void sweep(const Case& test, const Block& block) {
    CudaRuntime& cuda = CudaRuntime::instance();
    const void* const kernel = hardware::registeredKernel(test.kernel);
    for (std::uint32_t mib = 0; mib < block.mebibytes; mib += blocks) {
        Word chunk = chunkBytes;
        std::uint8_t *base = block.begin + (std::size_t{mib} << 20), *end = block.begin + block.bytes();
        std::uint8_t *flag = block.flag, *reference = block.reference;
        auto arguments = list(&chunk, &base, &end);
        const auto rest = test.arguments(&flag, &reference);
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        if (cuda.cudaLaunchKernel(kernel, {blocks}, {1}, arguments.data(), 0, nullptr) !=
            module::video_card::cudaSuccess) {
            throw std::runtime_error(std::string(test.kernel) + " cannot be launched");
        }
        cuda.cudaDeviceSynchronize();
    }
}

} // namespace

int main(int count, char** words) try {
    Block block{benchmarks::numberArgument<std::uint32_t>(count, words, 1, 1024)};
    if (!allocate(block)) {
        std::fprintf(stderr, "the simulated card cannot be had\n");
        return 2;
    }
    // Device addresses of the simulated card are addresses of this process.
    std::memset(block.begin, 1, block.bytes());
    std::memset(block.reference, 1, chunkBytes);
    int difference = 0;
    const double fill = bestSeconds([&] { std::memset(block.begin, 0, block.bytes()); });
    const double comparison = bestSeconds(
        [&] { difference |= std::memcmp(block.begin, block.begin + block.bytes() / 2, block.bytes() / 2); });
    std::printf("memset %.4f s, memcmp %.4f s over %u MiB%s\n", fill, comparison, block.mebibytes,
                difference != 0 ? " (different)" : "");

    bool fastEnough = true;
    std::set<std::string> seen;
    for (const Case& test : tests::plain_walk::allCases()) {
        // Both directions of the kernels that have them; one offset stands for all.
        if (!seen.insert(test.kernel).second && !std::string(test.kernel).starts_with("memory_fault")) {
            continue;
        }
        const bool needsReference = std::string(test.kernel) == "RandomNumberSequenceKernelCheckWrite";
        double seconds = 1e9;
        for (int round = 0; round < rounds; ++round) {
            if (needsReference) {
                for (std::uint32_t mib = 0; mib < block.mebibytes; ++mib) {
                    std::memcpy(block.begin + (std::size_t{mib} << 20), block.reference, chunkBytes);
                }
            }
            const auto start = std::chrono::steady_clock::now();
            sweep(test, block);
            seconds = std::min(
                seconds, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
        }
        const double ratio = (fill + comparison) / seconds;
        fastEnough = fastEnough && ratio >= 0.5;
        std::printf("%-38s %.4f s  ratio %.2f%s\n", test.kernel, seconds, ratio,
                    ratio >= 0.5 ? "" : "  TOO SLOW");
    }
    return fastEnough ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
}
