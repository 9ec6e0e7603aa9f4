#include "stress_test_under_test.h"

#include "module/video_card/stress/wireframe_stress_test_wrapper.h"

#include "core/test_result.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <string>
#include <vector>

// The wireframe test from its first slice to its last, each frame taking a quarter of a second.
namespace vexil::tests {
namespace {

using core::TestResult;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string failedOperation = "report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION";
const std::string systemEvent =
    "report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";

TEST(WireframeStressTestWrapper, CallsItsFunctionAndReturns0) {
    int calls = 0;
    std::function<void()> work = [&calls] { ++calls; };
    module::video_card::WireframeStressTestWrapper wrapper(work);
    AbstractWidgetWrapper& widget = wrapper;
    EXPECT_EQ(widget.showWidget(nullptr, nullptr, 96), 0U);
    EXPECT_EQ(calls, 1);
}

class WireframePath : public testing::Test {
protected:
    WireframePath() {
        stress_.wireframe.onFrame = [this] { stress_.timer.tick += 250; };
        stress_.set("DURATION", "0.05"); // 3 seconds
    }
    /// Something happens with a frame, counted from 1.
    void atFrame(int number, const std::function<void()>& happen) {
        stress_.wireframe.onFrame = [this, number, happen] {
            stress_.timer.tick += 250;
            if (stress_.wireframe.frames == number) {
                happen();
            }
        };
    }

    StressTestUnderTest stress_{true};
};

TEST_F(WireframePath, RendersSlicesOfASecondAndEndsWithTheThreeLines) {
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.reporter.questions, 3);
    const std::string items =
        " \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 48\xC2\xB0"
        "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 95% \t/\t GPU_STRESS_TEST_INFO_FPS: 60";
    EXPECT_THAT(stress_.reporter.events, ElementsAre("progress 33", "progress 66", "progress 100",
                                                     "progress 100", "report 0 MINIMUM" + items,
                                                     "report 0 MAXIMUM" + items, "report 0 AVERAGE" + items));
}

TEST_F(WireframePath, DrawsEachPictureTwice) {
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.wireframe.frames, 12);
    ASSERT_EQ(stress_.wireframe.calls.size(), 18U);
    for (std::size_t i = 0; i < 18; i += 3) {
        EXPECT_EQ(stress_.wireframe.calls[i], "advance");
        EXPECT_EQ(stress_.wireframe.calls[i + 1], "frame");
        EXPECT_EQ(stress_.wireframe.calls[i + 2], "frame");
    }
}

TEST_F(WireframePath, DrawsOnTheGuiThread) {
    bool onGui = true;
    stress_.wireframe.onFrame = [&] {
        stress_.timer.tick += 250;
        onGui = onGui && QThread::currentThread() == QCoreApplication::instance()->thread();
    };
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_TRUE(onGui);
}

TEST_F(WireframePath, NeverJudgesAPicture) {
    stress_.wireframe.renderer.picture[0] = 1;
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.wireframe.renderer.readBacks, 0);
}

TEST_F(WireframePath, SamplesWhenMoreThanTwoSecondsHavePassed) {
    stress_.set("DURATION", "0.1"); // 6 slices: samples behind the third and the sixth
    int sampled = 0;
    stress_.reporter.onProgress = [&](std::uint8_t) {
        stress_.wireframe.renderer.fps = 10.0F * float(++sampled);
    };
    stress_.wireframe.renderer.fps = 1000;
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    const auto reports = stress_.reporter.reports();
    ASSERT_EQ(reports.size(), 3U);
    EXPECT_TRUE(reports[0].ends_with("GPU_STRESS_TEST_INFO_FPS: 20")) << reports[0];
    EXPECT_TRUE(reports[1].ends_with("GPU_STRESS_TEST_INFO_FPS: 50")) << reports[1];
    EXPECT_TRUE(reports[2].ends_with("GPU_STRESS_TEST_INFO_FPS: 35")) << reports[2];
}

TEST_F(WireframePath, OfNoDurationRendersNothingAndPasses) {
    stress_.set("DURATION", "0");
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.reporter.questions, 0);
    EXPECT_THAT(stress_.reporter.events,
                ElementsAre("progress 100", "report 0 MINIMUM", "report 0 MAXIMUM", "report 0 AVERAGE"));
}

TEST_F(WireframePath, TellsMoreThan100PercentWhenTheLastSliceEndsLate) {
    stress_.wireframe.onFrame = [this] { stress_.timer.tick += 350; };
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    ASSERT_GE(stress_.reporter.events.size(), 4U);
    EXPECT_EQ(std::vector(stress_.reporter.events.begin(), stress_.reporter.events.begin() + 4),
              (std::vector<std::string>{"progress 46", "progress 93", "progress 140", "progress 100"}));
}

TEST_F(WireframePath, WithoutRendererOrModelsCouldNotExecuteTheOperation) {
    stress_.makesWireframe = false;
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.events, ElementsAre("progress 100", failedOperation, "progress 100"));
    EXPECT_EQ(stress_.reporter.questions, 0);
}

TEST_F(WireframePath, IsNotSupportedByAHostWithoutSystemEvents) {
    stress_.card.arguments.systemEvents.reset();
    EXPECT_EQ(stress_.run(), TestResult::NotSupported);
    EXPECT_THAT(stress_.reporter.events, ElementsAre("progress 100"));
    EXPECT_THAT(stress_.wireframe.calls, IsEmpty());
}

struct FrameRow {
    int frame;
    std::vector<std::string> progressBefore;
};

TEST(StressWireframePath, EndsWithTheFirstFrameThatFails) {
    const std::vector<FrameRow> rows = {{1, {}}, {2, {}}, {5, {"progress 33"}}, {6, {"progress 33"}}};
    for (const auto& row : rows) {
        StressTestUnderTest stress(true);
        stress.set("DURATION", "0.05");
        stress.wireframe.onFrame = [&] { stress.timer.tick += 250; };
        stress.wireframe.failingFrame = row.frame;
        EXPECT_EQ(stress.run(), TestResult::NotCompleted);
        EXPECT_EQ(stress.wireframe.frames, row.frame) << "no frame behind it";
        auto expected = row.progressBefore;
        expected.insert(expected.end(), {"progress 100", "progress 100", failedOperation});
        EXPECT_EQ(stress.reporter.events, expected) << row.frame;
    }
}

TEST_F(WireframePath, EndsAtACancelBehindTheSliceWithoutAMessage) {
    atFrame(2, [this] { stress_.card.cancel = 1; });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_EQ(stress_.wireframe.frames, 4) << "the slice goes on to its end";
    EXPECT_THAT(stress_.reporter.events, ElementsAre("progress 33", "progress 100"));
}

TEST_F(WireframePath, TellsASystemEventTwiceAsItStands) {
    atFrame(2, [this] { stress_.card.arguments.systemEvents->flags = 8; });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.events, ElementsAre("progress 33", systemEvent, "progress 100",
                                                     "progress 100", "progress 100", systemEvent));
}

TEST_F(WireframePath, TellsOfAFrameThatFailedAndOfTheEventThatCameWithIt) {
    stress_.wireframe.failingFrame = 2;
    atFrame(2, [this] { stress_.card.arguments.systemEvents->flags = 8; });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.events,
                ElementsAre("progress 100", "progress 100", failedOperation, "progress 100", systemEvent));
}

TEST_F(WireframePath, OfAHostThatRunsNothingPassesAsItStands) {
    stress_.reporter.asks = false;
    stress_.timer.ticksPerQuestion = 250;
    EXPECT_EQ(stress_.run(), TestResult::Passed) << "no slice ran that could have failed";
    EXPECT_THAT(stress_.wireframe.calls, IsEmpty());
    EXPECT_GT(stress_.reporter.questions, 1);
    EXPECT_EQ(stress_.reporter.reports().size(), 3U);
}

TEST_F(WireframePath, OfADurationThatIsNoNumberGoesOnUntilItIsEnded) {
    stress_.set("DURATION", "nan");
    atFrame(30, [this] { stress_.card.cancel = 1; });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_EQ(stress_.wireframe.frames, 32);
    EXPECT_EQ(stress_.reporter.events.front(), "progress 0");
}

TEST_F(WireframePath, LeavesOutSensorsThatAreMissing) {
    stress_.sensors->temperature.reset();
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_THAT(stress_.reporter.reports(),
                Each(testing::EndsWith(
                    " \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 95% \t/\t GPU_STRESS_TEST_INFO_FPS: 60")));
    EXPECT_THAT(stress_.reporter.reports(), Each(testing::Not(testing::HasSubstr("TEMPERATURE"))));
}

TEST_F(WireframePath, SurvivesSensorsThatComeAndGo) {
    stress_.set("DURATION", "0.1");
    stress_.sensors->usage.reset();
    atFrame(16, [this] {
        stress_.sensors->temperature.reset();
        stress_.sensors->usage = 40;
    });
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_THAT(stress_.reporter.reports(),
                Each(testing::EndsWith(" \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 48\xC2\xB0"
                                       "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 40% \t/\t "
                                       "GPU_STRESS_TEST_INFO_FPS: 60")));
}

TEST_F(WireframePath, MayBeRunAgain) {
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    const auto events = stress_.reporter.events;
    stress_.reporter.events.clear();
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.reporter.events, events);
}

} // namespace
} // namespace vexil::tests
