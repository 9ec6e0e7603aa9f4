#include "kernel_timing.h"

#include "kernel_cases.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "plain_speed.h"
#include "registered_kernels.h"

#include <cstdio>
#include <functional>
#include <map>
#include <string>

namespace vexil::hardware {

namespace {

using namespace module::video_card;
using namespace cuda;
using tests::plain_walk::Case;
using tests::plain_walk::list;
using tests::plain_walk::Word;

constexpr std::uint32_t chunkBytes = 1 << 20;
constexpr std::uint32_t blocks = 16;

struct Variant {
    const char* title;
    const char* ptx;
};

constexpr Variant variants[] = {
#include "kernel_variants.inc"
};

/// A block on the card with what the kernels need beside it.
class Bench {
public:
    Bench(std::int32_t device, std::uint32_t blockMiB) : blockMiB_(blockMiB) {
        CudaRuntime& cuda = CudaRuntime::instance();
        cuda.cudaSetDevice(device);
        usable_ = cuda.cudaMalloc(&block_, bytes()) == cudaSuccess &&
                  cuda.cudaMalloc(&flag_, 1) == cudaSuccess &&
                  cuda.cudaMalloc(&reference_, chunkBytes) == cudaSuccess;
    }
    ~Bench() { CudaRuntime::instance().cudaDeviceReset(); }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    [[nodiscard]] bool usable() const { return usable_; }
    [[nodiscard]] std::size_t bytes() const { return std::size_t{blockMiB_} << 20; }
    [[nodiscard]] std::uint8_t* block() const { return block_; }

    using Start = std::function<void(unsigned blocks, void** arguments)>;

    /// As a test does it, without the reading back of the flag.
    double sweep(const Case& test, const Start& start) {
        return secondsOf([&] {
            for (std::uint32_t mib = 0; mib < blockMiB_; mib += blocks) {
                launch(test, start, mib, blocks);
                CudaRuntime::instance().cudaDeviceSynchronize();
            }
        });
    }
    double atOnce(const Case& test, const Start& start) {
        return secondsOf([&] { launch(test, start, 0, blockMiB_); });
    }
    /// Launches that find nothing to do, each waited for.
    double emptyLaunches(const Case& test, const Start& start, unsigned count) {
        return secondsOf([&] {
            for (unsigned i = 0; i < count; ++i) {
                launch(test, start, blockMiB_, blocks);
                CudaRuntime::instance().cudaDeviceSynchronize();
            }
        });
    }

private:
    void launch(const Case& test, const Start& start, std::uint32_t mib, unsigned count) {
        Word chunk = chunkBytes;
        std::uint8_t *base = block_ + (std::size_t{mib} << 20), *end = block_ + bytes(), *flag = flag_,
                     *reference = reference_;
        auto arguments = list(&chunk, &base, &end);
        const auto rest = test.arguments(&flag, &reference);
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        start(count, arguments.data());
    }

    std::uint32_t blockMiB_;
    std::uint8_t *block_ = nullptr, *flag_ = nullptr, *reference_ = nullptr;
    bool usable_ = false;
};

/// Bytes that a kernel moves for each byte that it sweeps.
double trafficOf(const std::string& kernel) {
    static const std::map<std::string, double> traffic = {
        {"block_move_kernel_move", 2},
        {"memory_fault_kernel_check_write", 2},
        {"moving_inversion_kernel_check_write", 2},
        {"RandomNumberSequenceKernelWrite", 2},
        {"RandomNumberSequenceKernelCheckWrite", 3},
        {"RandomNumberSequenceKernelCheck", 2},
        {"modulo_x_kernel_check", 0.05},
    };
    const auto found = traffic.find(kernel);
    return found == traffic.end() ? 1 : found->second;
}

/// A kernel of the tests, or nothing for the cases whose arguments the tests do not use.
Bench::Start registered(const Case& test) {
    const void* const key = registeredKernel(test.kernel);
    return [key](unsigned count, void** arguments) {
        CudaRuntime::instance().cudaLaunchKernel(key, {count}, {1}, arguments, 0, nullptr);
    };
}

/// Leaves memory in which the kernel finds nothing wrong, where the way through a wrong word is a slower one.
void settle(Bench& bench, const Case& test) {
    if (std::string(test.kernel) == "RandomNumberSequenceKernelCheckWrite") {
        Case write = test;
        write.kernel = "RandomNumberSequenceKernelWrite";
        bench.atOnce(write, registered(write));
    }
}

/// The first case of each kernel, and of those that walk in two directions both.
std::vector<Case> timedCases() {
    std::vector<Case> timed;
    for (const Case& test : tests::plain_walk::allCases()) {
        unsigned before = 0;
        for (const Case& other : timed) {
            before += std::string(other.kernel) == test.kernel ? 1 : 0;
        }
        if (before == 0 || (before == 1 && std::string(test.kernel).starts_with("memory_fault"))) {
            timed.push_back(test);
        }
    }
    return timed;
}

void printSpeed(const char* name, double bytes, double seconds) {
    std::printf("  %-38s %9.5f s %10.2f GB/s\n", name, seconds, bytes / seconds / 1e9);
}

} // namespace

void timeKernels(std::int32_t device, std::uint32_t blockMiB) {
    Bench bench(device, blockMiB);
    if (!bench.usable()) {
        std::printf("no block of %u MiB on the card\n", blockMiB);
        return;
    }
    const auto bytes = static_cast<double>(bench.bytes());
    std::printf("the card by itself, %u MiB\n", blockMiB);
    const PlainSpeed plain = plainSpeed(bench.block(), bench.bytes());
    std::printf("  plain fill %.2f GB/s, plain copy of one half to the other %.2f GB/s\n", plain.fill / 1e9,
                plain.copy / 1e9);

    const auto cases = timedCases();
    constexpr unsigned launches = 1000;
    bench.emptyLaunches(cases.front(), registered(cases.front()), launches);
    const double empty = bench.emptyLaunches(cases.front(), registered(cases.front()), launches) / launches;
    std::printf("  a launch that does nothing, waited for: %.2f us\n", empty * 1e6);

    std::printf("kernels over %u MiB: 16 blocks a launch, and all blocks in one launch\n", blockMiB);
    for (const Case& test : cases) {
        const auto start = registered(test);
        bench.atOnce(test, start); // compiled and warm
        settle(bench, test);
        const double swept = bench.sweep(test, start);
        settle(bench, test);
        const double once = bench.atOnce(test, start);
        const double moved = bytes * trafficOf(test.kernel);
        const double overhead = empty * ((blockMiB + blocks - 1) / blocks);
        const double ofCopy = plain.copy > 0 ? 100 * moved / swept / plain.copy : 0;
        std::printf("  %-38s %9.5f s %8.2f GB/s, %5.1f %% of the copy | %9.5f s %9.2f GB/s | "
                    "launches %4.1f %%, 16 blocks %5.1f %%\n",
                    test.kernel, swept, moved / swept / 1e9, ofCopy, once, moved / once / 1e9,
                    100 * overhead / swept, 100 * (swept - overhead - once) / swept);
    }
}

void timeVariants(std::int32_t device, std::uint32_t blockMiB) {
    Bench bench(device, blockMiB);
    if (!bench.usable() || driver().cuModuleLoadData == nullptr) {
        return;
    }
    CudaRuntime::instance().cudaDeviceSynchronize(); // makes the context current
    for (const Case& test : timedCases()) {
        const double moved = static_cast<double>(bench.bytes()) * trafficOf(test.kernel);
        const auto start = registered(test);
        bench.sweep(test, start);
        std::printf("%s\n", test.kernel);
        settle(bench, test);
        printSpeed("as built", moved, bench.sweep(test, start));
        for (const Variant& variant : variants) {
            CUmodule module = nullptr;
            CUfunction function = nullptr;
            if (driver().cuModuleLoadData(&module, variant.ptx) != CUDA_SUCCESS) {
                std::printf("  %-38s cannot be compiled\n", variant.title);
                continue;
            }
            if (driver().cuModuleGetFunction(&function, module, test.kernel) == CUDA_SUCCESS) {
                const Bench::Start other = [&](unsigned count, void** arguments) {
                    driver().cuLaunchKernel(function, count, 1, 1, 1, 1, 1, 0, nullptr, arguments, nullptr);
                };
                bench.sweep(test, other);
                settle(bench, test);
                printSpeed(variant.title, moved, bench.sweep(test, other));
            }
            driver().cuModuleUnload(module);
        }
    }
}

} // namespace vexil::hardware
