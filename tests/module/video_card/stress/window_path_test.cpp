#include "module/video_card/stress/window_path.h"

#include "stress_test_under_test.h"

#include "core/test_result.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

// The stress test through its window, with the window's real timers: each run takes a second or two.
namespace vexil::tests {
namespace {

using core::TestResult;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string failedOperation = "report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION";
const std::string systemEvent =
    "report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";
const std::string items = " \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 48\xC2\xB0"
                          "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 95% \t/\t GPU_STRESS_TEST_INFO_FPS: 60";

QWidget* stressWindow() {
    const auto windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(
        windows, [](const QWidget* window) { return window->objectName() == "StressTestDialog"; });
    return found == windows.end() ? nullptr : *found;
}

class WindowPath : public testing::Test {
protected:
    WindowPath() { stress_.set("DURATION", "0.02"); } // 1 second
    /// Something happens at a rendering, counted from 1, with the window on the screen.
    void atRendering(int number, const std::function<void(QWidget&)>& happen) {
        stress_.window.onRender = [this, number, happen] {
            if (std::cmp_equal(stress_.window.renderings.size(), number)) {
                ASSERT_NE(stressWindow(), nullptr);
                happen(*stressWindow());
            }
        };
    }

    StressTestUnderTest stress_{false};
};

TEST(WindowCode, IsMappedToTheStatusOfTheTest) {
    using module::video_card::statusOfWindow;
    EXPECT_EQ(statusOfWindow(0), 2) << "the GUI could not run it";
    EXPECT_EQ(statusOfWindow(1), TestResult::Passed);
    EXPECT_EQ(statusOfWindow(2), 2) << "a resize";
    EXPECT_EQ(statusOfWindow(3), TestResult::Passed) << "a stop, which the end of the run finds";
    EXPECT_EQ(statusOfWindow(4), TestResult::Failed);
    EXPECT_EQ(statusOfWindow(5), TestResult::NotCompleted);
    EXPECT_EQ(statusOfWindow(6), TestResult::Passed);
    EXPECT_EQ(statusOfWindow(0xFFFFFFFF), TestResult::Passed);
}

TEST_F(WindowPath, PassesWhenTheTimeIsUpAndSendsTheThreeLines) {
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.reporter.questions, 1);
    EXPECT_THAT(
        stress_.reporter.reports(),
        ElementsAre("report 0 MINIMUM" + items, "report 0 MAXIMUM" + items, "report 0 AVERAGE" + items));
    EXPECT_THAT(stress_.reporter.events, Contains("progress 50"));
    EXPECT_THAT(stress_.reporter.events, Contains("progress 100"));
    EXPECT_GT(stress_.window.renderings.size(), 50U);
    EXPECT_EQ(stress_.window.calls.back(), "gone");
    EXPECT_EQ(stressWindow(), nullptr);
}

TEST_F(WindowPath, FailsOnAFrameThatDiffersAtTheEndAndSendsNoResultLines) {
    stress_.window.renderer.picture[5] = 0xFF00FF00;
    EXPECT_EQ(stress_.run(), TestResult::Failed);
    EXPECT_THAT(stress_.reporter.reports(), IsEmpty());
    EXPECT_EQ(stress_.reporter.events.back(), "progress 100");
}

TEST_F(WindowPath, EndsAtEscapeWithoutAMessage) {
    atRendering(3, [](QWidget& window) {
        QKeyEvent other(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &other);
        EXPECT_TRUE(window.isVisible()) << "another key does nothing";
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &escape);
    });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_EQ(stress_.window.renderings.size(), 3U);
    EXPECT_THAT(stress_.reporter.reports(), IsEmpty());
}

TEST_F(WindowPath, EndsWhenTheWindowIsClosedWithoutAMessage) {
    atRendering(3, [](QWidget& window) { window.close(); });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_EQ(stress_.window.renderings.size(), 3U);
    EXPECT_THAT(stress_.reporter.reports(), IsEmpty());
}

TEST_F(WindowPath, CouldNotExecuteTheOperationWhenTheWindowIsResized) {
    atRendering(3, [](QWidget& window) { window.resize(500, 300); });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_EQ(stress_.window.renderings.size(), 3U);
    ASSERT_GE(stress_.reporter.events.size(), 3U);
    EXPECT_EQ(std::vector(stress_.reporter.events.end() - 3, stress_.reporter.events.end()),
              (std::vector<std::string>{"progress 100", "progress 100", failedOperation}));
}

TEST_F(WindowPath, EndsAtASystemEventWithTheLinesAndThenTheMessage) {
    stress_.set("DURATION", "5");
    atRendering(3, [this](QWidget&) { stress_.card.arguments.systemEvents->flags = 1; });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.reports(),
                ElementsAre("report 0 MINIMUM" + items, "report 0 MAXIMUM" + items,
                            "report 0 AVERAGE" + items, systemEvent));
}

TEST_F(WindowPath, EndsWithinASecondAtAStopFromTheHostWithoutAMessageOfIts) {
    stress_.set("DURATION", "5");
    atRendering(3, [this](QWidget&) { stress_.card.cancel = 1; });
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_LT(stress_.window.renderings.back(), 1.5F);
    EXPECT_EQ(stress_.reporter.reports().size(), 3U) << "the lines of what was measured, and nothing else";
}

TEST_F(WindowPath, IsNotCompletedThoughAFrameDifferedWhenTheHostStopsIt) {
    stress_.window.renderer.picture[5] = 0xFF00FF00;
    stress_.reporter.onProgress = [this](std::uint8_t) {
        // Once the window is gone, whose last second has found the difference.
        stress_.card.cancel = stress_.window.calls.back() == "gone" ? 1 : 0;
    };
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.reports(), IsEmpty());
}

TEST_F(WindowPath, IsNotCompletedThoughAFrameDifferedWhenASystemEventHasHappened) {
    stress_.window.renderer.picture[5] = 0xFF00FF00;
    stress_.window.onRender = [this] {
        stress_.card.arguments.systemEvents->flags = stress_.window.renderings.back() > 0.9F ? 1 : 0;
    };
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.reports(), ElementsAre(systemEvent));
}

TEST_F(WindowPath, OfAHostThatShowsNothingCouldNotExecuteTheOperation) {
    stress_.reporter.asks = false;
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.events, ElementsAre("progress 100", "progress 100", failedOperation));
}

TEST(StressWindowPath, WhoseWindowCannotBeBuiltSaysNothing) {
    for (bool WindowScript::*part :
         {&WindowScript::makesRenderer, &WindowScript::makesScene, &WindowScript::makesComparison}) {
        StressTestUnderTest stress(false);
        stress.window.*part = false;
        EXPECT_EQ(stress.run(), TestResult::NotCompleted);
        EXPECT_THAT(stress.reporter.events, ElementsAre("progress 100"));
        EXPECT_EQ(stressWindow(), nullptr);
    }
}

TEST_F(WindowPath, SleepsForItsLoadAndSendsTheTemperatureInABurnIn) {
    stress_.set("DURATION", "0.05"); // 3 seconds
    stress_.set("BURN_IN", "TRUE");
    stress_.set("LOAD", "25");
    stress_.timer.ticksPerQuestion = 1000;
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    ASSERT_GE(stress_.timer.sleeps.size(), 2U);
    EXPECT_THAT(stress_.timer.sleeps, testing::Each(750U));
    EXPECT_EQ(std::ranges::count(stress_.reporter.events, "report 0 [VIDEO_CARD_BURN_IN_TEMPERATURE](48)"),
              static_cast<std::ptrdiff_t>(stress_.timer.sleeps.size()));
}

TEST_F(WindowPath, IsTimedWithoutABurnInWhateverInfiniteSays) {
    stress_.set("INFINITE", "TRUE");
    stress_.set("LOAD", "25");
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_THAT(stress_.timer.sleeps, testing::Each(0U));
}

TEST_F(WindowPath, ThatIsInfiniteGoesOnUntilAFrameDiffersAtAPeriodsEnd) {
    stress_.set("BURN_IN", "TRUE");
    stress_.set("INFINITE", "TRUE");
    int periods = 0;
    stress_.window.onRender = [&] {
        const auto& times = stress_.window.renderings;
        if (times.size() > 1 && times.back() < times[times.size() - 2] && ++periods == 2) {
            stress_.window.renderer.picture[0] = 1;
        }
    };
    EXPECT_EQ(stress_.run(), TestResult::Failed);
    EXPECT_EQ(stress_.window.renderer.readBacks, 3) << "at the end of the third period";
    EXPECT_EQ(std::ranges::count(stress_.reporter.reports(), "report 0 MINIMUM" + items), 0);
}

TEST_F(WindowPath, MayBeRunAgain) {
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.run(), TestResult::Passed);
    EXPECT_EQ(stress_.reporter.reports().size(), 6U);
}

} // namespace
} // namespace vexil::tests
