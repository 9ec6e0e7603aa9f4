#include "arguments.h"
#include "bare_surfaces.h"
#include "module/video_card/direct3d/video_memory_test.h"
#include "text_handlers.h"
#include "timed_direct3d.h"
#include "timing.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <vector>

// What the video memory test costs over the work that it has the card do. Both in turns and in one process,
// on the first adapter: fifty surfaces each, the test with its own images, checks and short-lived textures.
namespace {

using namespace vexil;
using namespace vexil::benchmarks;
using namespace vexil::module::video_card;

constexpr std::uint32_t surfaces = 50;
constexpr double aim = 1.6;

/// Ends the last step of each surface, and shows what else the test has to say.
class BenchmarkReporter final : public core::TestReporter {
public:
    explicit BenchmarkReporter(SurfaceTimes& times) : times_(times) {}

    void setProgress(std::uint8_t percent) override {
        if (percent != 0) {
            times_.end(SurfaceStep::comparison);
        }
    }
    void report(const core::TestMessage& message) override { last = message.key; }
    void interact(std::unique_ptr<core::InputInteraction>&) override {}

    std::string last;

private:
    SurfaceTimes& times_;
};

/// A card with enough memory that nobody knows the free part of.
std::shared_ptr<Device> makeCard(const Dx11Context& dx11) {
    static sal::TextHandler strings;
    static sal::NumberText numbers;
    AdapterRecord record;
    record.name = "Benchmark";
    record.location = "01:00.0";
    auto card = std::make_shared<Device>(record, DeviceServices{strings, numbers, 0});
    card->setDirect3D(dx11);
    return card;
}

void runTest(SurfaceTimes& times) {
    timeDirect3D(&times);
    const auto card = makeCard(createDx11Context(enumerateAdapters().at(0)));
    BenchmarkReporter reporter(times);
    const std::uint8_t cancel = 0;
    Dx11VideoMemoryTest test;
    const auto result = test.execute({card, &cancel, &reporter, nullptr});
    timeDirect3D(nullptr);
    if (result != core::TestResult::Passed || reporter.last != "TOTAL_SURFACES_TESTED: 50/50") {
        throw std::runtime_error("the test ended with " + std::to_string(result) + ", " + reporter.last);
    }
}

void print(const char* title, double part, const SurfaceTimes& times, const std::vector<double>& bareTimes) {
    static constexpr const char* names[] = {"image", "upload", "draw", "read back", "comparison"};
    const auto steps = times.quantiles(part);
    const double test = quantile(times.totals(), part);
    const double bare = quantile(bareTimes, part);
    std::printf("%s\n  bare, a surface   %6.2f ms\n  test, a surface   %6.2f ms\n", title, bare, test);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        std::printf("    %-15s %6.2f ms %5.1f %%\n", names[i], steps[i], 100 * steps[i] / test);
    }
    std::printf("  ratio             %6.2f (aim: at most %.1f)\n", test / bare, aim);
}

} // namespace

int main(int argc, char** argv) try {
    const int rounds = numberArgument(argc, argv, 1, 7);
    SurfaceTimes times;
    std::vector<double> bareTimes;
    for (int i = 0; i < rounds; ++i) {
        runTest(times);
        BareSurfaces bare(createDx11Context(enumerateAdapters().at(0)), surfaces);
        const auto more = bare.run();
        bareTimes.insert(bareTimes.end(), more.begin(), more.end());
    }
    print("median", 0.5, times, bareTimes);
    print("fastest tenth", 0.1, times, bareTimes);
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return EXIT_FAILURE;
}
