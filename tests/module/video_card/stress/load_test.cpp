#include "core/test_result.h"
#include "gui_thread.h"
#include "module/video_card/stress/d3d11_stress_test.h"
#include "stress_fakes.h"
#include "support/card_under_test.h"

#include "asking_reporter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

// How many frames a load leaves, measured with the suite's own clock.
namespace vexil::tests {
namespace {

/// Frames of five seconds, each of which takes the card some ten milliseconds. The second before them is left
/// out: no load is lowered in it.
std::ptrdiff_t framesAt(const std::string& load) {
    WindowScript window;
    window.onRender = [] { std::this_thread::sleep_for(std::chrono::milliseconds(9)); };
    module::video_card::D3D11StressTest test(
        false, {get_timer(), {}, [&](const module::video_card::WindowSceneRequest&) {
                    return std::make_unique<FakeWindowScene>(window);
                }});
    for (const auto& entry : test.parameters()) {
        entry.parameter->setValue(entry.key == "DURATION"  ? "0.1"
                                  : entry.key == "BURN_IN" ? "TRUE"
                                  : entry.key == "LOAD"    ? load
                                                           : "");
    }
    CardUnderTest card;
    AskingReporter reporter;
    card.arguments.reporter = &reporter;
    onWorker([&] { EXPECT_EQ(test.execute(card.arguments), core::TestResult::Passed); });
    return std::ranges::count_if(window.renderings, [](float time) { return time >= 1 && time < 6; });
}

TEST(StressLoad, Of50PercentHalvesTheFramesWithin10Percent) {
    const auto full = framesAt("100");
    const auto half = framesAt("50");
    EXPECT_GT(full, 200);
    const auto ratio = static_cast<double>(half) / static_cast<double>(full);
    RecordProperty("ratio", std::to_string(ratio));
    EXPECT_GT(ratio, 0.45) << half << " of " << full;
    EXPECT_LT(ratio, 0.55) << half << " of " << full;
}

} // namespace
} // namespace vexil::tests
