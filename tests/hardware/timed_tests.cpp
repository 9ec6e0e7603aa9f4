#include "timed_tests.h"

#include "module/video_card/cuda/cuda_abstract_math_op_test.h"
#include "module/video_card/cuda/cuda_address_test.h"
#include "module/video_card/cuda/cuda_block_move_test.h"
#include "module/video_card/cuda/cuda_memory_fault_test.h"
#include "module/video_card/cuda/cuda_modulo_x_test.h"
#include "module/video_card/cuda/cuda_moving_inversion_test.h"
#include "module/video_card/cuda/cuda_random_number_sequence_test.h"
#include "module/video_card/device.h"
#include "plain_speed.h"
#include "text_handlers.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace vexil::hardware {

namespace {

using namespace module::video_card;
using Clock = std::chrono::steady_clock;

/// What a pass moves for each byte of the block that it sweeps.
struct PassTraffic {
    const char* name;
    double read, written;
};

class StampingReporter final : public core::TestReporter {
public:
    std::vector<Clock::time_point> progress;
    std::string messages;

    void setProgress(std::uint8_t) override { progress.push_back(Clock::now()); }
    void report(const core::TestMessage& message) override { messages += " " + message.key; }
    void interact(std::unique_ptr<core::InputInteraction>&) override {}
};

/// A memory test whose block can be made smaller, that measures what the card does with that block by itself,
/// and notes when its body starts.
template <typename Test>
class Timed final : public Test {
public:
    explicit Timed(std::uint32_t mostMiB) : mostMiB_(mostMiB) {}

    Clock::time_point start;
    std::uint32_t sweptMiB = 0;
    PlainSpeed plain;

protected:
    bool allocateTestMemory(const cudaDeviceProp& properties) override {
        if (!Test::allocateTestMemory(properties)) {
            return false;
        }
        // On some sizes of cards the count of MiB wraps around, and the run would not end in a lifetime.
        const auto held = static_cast<std::uint32_t>((this->memoryEnd_ - this->memoryBegin_) >> 20);
        this->testedMiB_ = std::min({this->testedMiB_, held, mostMiB_ == 0 ? held : mostMiB_});
        this->memoryEnd_ = this->memoryBegin_ + (std::size_t{this->testedMiB_} << 20);
        return true;
    }
    std::uint8_t runBody(const core::TestRunArguments& arguments) override {
        sweptMiB = this->testedMiB_;
        plain = plainSpeed(this->memoryBegin_, std::size_t{sweptMiB} << 20);
        start = Clock::now();
        return Test::runBody(arguments);
    }

private:
    std::uint32_t mostMiB_;
};

double seconds(Clock::duration duration) { return std::chrono::duration<double>(duration).count(); }

core::TestRunArguments argumentsFor(const std::shared_ptr<Device>& device, core::TestReporter& reporter) {
    static std::uint8_t cancel = 0;
    return {device, &cancel, &reporter, nullptr};
}

/// Prints passes `first` to `first + count - 1` as one line.
void printPasses(const PassTraffic& traffic, const std::vector<double>& passSeconds, std::size_t first,
                 std::size_t count, double sweptBytes, const PlainSpeed& plain) {
    double total = 0;
    for (std::size_t pass = first; pass < first + count; ++pass) {
        total += passSeconds[pass];
    }
    const double bytes = sweptBytes * static_cast<double>(count) * (traffic.read + traffic.written);
    const auto share = [&](double of) { return of > 0 ? 100 * bytes / total / of : 0; };
    std::printf("    %-30s %9.4f s %9.3f GB moved %9.2f GB/s, %6.2f %% of the copy, %6.2f %% of the fill\n",
                traffic.name, total, bytes / 1e9, bytes / total / 1e9, share(plain.copy), share(plain.fill));
}

/// `passes` are the passes of one round, which the test makes `rounds` times.
template <typename Test>
bool runMemoryTest(const char* name, const std::shared_ptr<Device>& device, std::uint32_t mostMiB,
                   const std::vector<PassTraffic>& passes, std::uint32_t firstMiB = 0,
                   std::size_t rounds = 1) {
    Timed<Test> test(mostMiB);
    StampingReporter reporter;
    const auto result = test.execute(argumentsFor(device, reporter));
    std::printf("%s: result %u%s, %u MiB; plain copy %.2f GB/s, plain fill %.2f GB/s\n", name, result,
                reporter.messages.c_str(), test.sweptMiB, test.plain.copy / 1e9, test.plain.fill / 1e9);
    const std::size_t launches = (test.sweptMiB - std::min(firstMiB, test.sweptMiB) + 15) / 16;
    const std::size_t total = passes.size() * rounds;
    if (result != core::TestResult::Passed || reporter.progress.size() != launches * total + 1) {
        return false;
    }
    // The last progress is the end of the run; each other one is the end of a launch.
    std::vector<double> byKind(total);
    for (std::size_t pass = 0; pass < total; ++pass) {
        const auto begin = pass == 0 ? test.start : reporter.progress[pass * launches - 1];
        byKind[pass % passes.size() * rounds + pass / passes.size()] =
            seconds(reporter.progress[(pass + 1) * launches - 1] - begin);
    }
    const double sweptBytes = static_cast<double>(test.sweptMiB - firstMiB) * (1 << 20);
    for (std::size_t kind = 0; kind < passes.size(); ++kind) {
        printPasses(passes[kind], byKind, kind * rounds, rounds, sweptBytes, test.plain);
    }
    return true;
}

template <typename Test>
bool runMathTest(const char* name, const std::shared_ptr<Device>& device) {
    Test test;
    StampingReporter reporter;
    const auto start = Clock::now();
    const auto result = test.execute(argumentsFor(device, reporter));
    std::printf("%s: result %u%s, %.4f s\n", name, result, reporter.messages.c_str(),
                seconds(Clock::now() - start));
    return result == core::TestResult::Passed;
}

std::shared_ptr<Device> makeDevice(std::int32_t index) {
    sal::TextHandler strings;
    sal::NumberText numbers;
    auto device = std::make_shared<Device>(AdapterRecord{}, DeviceServices{strings, numbers, 0});
    device->setCuda({"", index});
    return device;
}

} // namespace

int runTimedTests(std::int32_t index, std::uint32_t mostMiB) {
    const auto device = makeDevice(index);
    int failures = 0;
    const auto count = [&](bool passed) { failures += passed ? 0 : 1; };
    // The check of modulo-X reads one word in twenty, but one of nearly every line of memory.
    count(runMemoryTest<CUDAMemoryFaultTest>("memory fault", device, mostMiB,
                                             {{"write, ascending", 0, 1},
                                              {"check and write 1, ascending", 1, 1},
                                              {"check and write 0, ascending", 1, 1},
                                              {"check and write 1, descending", 1, 1},
                                              {"check and write 0, descending", 1, 1},
                                              {"check, descending", 1, 0}}));
    count(runMemoryTest<CUDAAddressTest>("address", device, mostMiB, {{"write", 0, 1}, {"check", 1, 0}}));
    count(runMemoryTest<CUDAMovingInversionTest>(
        "moving inversion", device, mostMiB, {{"write", 0, 1}, {"check and write", 1, 1}, {"check", 1, 0}}));
    count(runMemoryTest<CUDABlockMoveTest>("block move", device, mostMiB,
                                           {{"init", 0, 1}, {"move", 1, 1}, {"check", 1, 0}}));
    count(runMemoryTest<CudaRandomNumberSequenceTest>(
        "random sequence", device, mostMiB, {{"write", 1, 1}, {"check and write", 2, 1}, {"check", 2, 0}},
        1));
    count(runMemoryTest<CudaModuloXTest>("modulo X", device, mostMiB,
                                         {{"write, 20 times", 0, 1}, {"check, 20 times", 0.05, 0}}, 0, 20));
    count(runMathTest<CudaStandardMathOperation>("standard arithmetic", device));
    count(runMathTest<CudaAdvancedMathOperation>("advanced arithmetic", device));
    return failures;
}

} // namespace vexil::hardware
