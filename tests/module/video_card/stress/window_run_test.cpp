#include "module/video_card/stress/window_run.h"

#include "stress_fakes.h"
#include "support/recording_reporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

// The ticks of the two timers, with a clock in the test's hand.
namespace vexil::tests {
namespace {

using module::video_card::LoadController;
using module::video_card::StressRun;
using module::video_card::StressStatistics;
using module::video_card::WindowRun;
using testing::ElementsAre;
using testing::IsEmpty;
using Events = std::vector<std::string>;

class StressWindowRun : public testing::Test {
protected:
    void SetUp() override { start(20); }

    void start(std::uint64_t durationSeconds) {
        const StressRun run{services_, arguments_, card_.device, lock_, statistics_, durationSeconds};
        run_ = std::make_unique<WindowRun>(run, controller_, scene_,
                                           WindowRun::Window{[this] { return elapsed_; },
                                                             [this] {
                                                                 ++restarts_;
                                                                 elapsed_ = 0;
                                                             },
                                                             [this](int code) { codes_.push_back(code); }});
    }
    /// Time passes, and the render timer fires.
    void renderAt(std::int64_t milliseconds) {
        timer_.tick += static_cast<std::uint32_t>(std::max<std::int64_t>(milliseconds - elapsed_, 0));
        elapsed_ = milliseconds;
        run_->onRenderTick();
    }
    void sampleAt(std::int64_t milliseconds) {
        elapsed_ = milliseconds;
        run_->onSampleTick();
    }

    FakeTimer timer_;
    WindowScript script_;
    FakeWindowScene scene_{script_};
    module::video_card::StressServices services_{&timer_, {}, {}};
    CardWithSensors card_;
    module::video_card::Device::Direct3DLock lock_ = card_.device.lock();
    std::uint8_t cancel_ = 0;
    RecordingReporter reporter_;
    core::TestRunArguments arguments_{{}, &cancel_, &reporter_, std::make_shared<core::SystemEventState>()};
    StressStatistics statistics_{arguments_};
    LoadController controller_;
    std::int64_t elapsed_ = 0;
    int restarts_ = 0;
    std::vector<int> codes_;
    std::unique_ptr<WindowRun> run_;
};

TEST_F(StressWindowRun, RendersEachTickAtTheTimeInSeconds) {
    renderAt(0);
    renderAt(16);
    renderAt(1250);
    EXPECT_THAT(script_.renderings, ElementsAre(0.0F, 0.016F, 1.25F));
    EXPECT_THAT(codes_, IsEmpty()) << "whether a frame could be drawn is not looked at";
}

TEST_F(StressWindowRun, TellsAProgressOnceAndTruncated) {
    for (const std::int64_t milliseconds : {0, 199, 200, 399, 400, 10'000, 19'999, 20'000}) {
        renderAt(milliseconds);
    }
    EXPECT_THAT(reporter_.events,
                ElementsAre("progress 1", "progress 2", "progress 50", "progress 99", "progress 100"))
        << "0 is what the host shows before the first";
}

TEST_F(StressWindowRun, OfNoDurationTellsTheProgressThatTheProcessorMakesOfInfinity) {
    start(0);
    renderAt(0);
    renderAt(5);
    EXPECT_THAT(reporter_.events, ElementsAre("progress 0"));
}

TEST_F(StressWindowRun, TicksTheLoadOnceAtEachWholeSecond) {
    controller_.loadFraction = 0.5;
    start(20);
    for (const std::int64_t milliseconds : {0, 400, 999}) {
        renderAt(milliseconds);
    }
    EXPECT_THAT(timer_.sleeps, IsEmpty());
    renderAt(1000);
    EXPECT_THAT(timer_.sleeps, ElementsAre(500U));
    elapsed_ = 1500; // what the sleep took
    renderAt(1900);
    EXPECT_THAT(timer_.sleeps, ElementsAre(500U));
    renderAt(2000);
    EXPECT_THAT(timer_.sleeps, ElementsAre(500U, 500U));
    elapsed_ = 2500;
    renderAt(4700);
    EXPECT_THAT(timer_.sleeps, ElementsAre(500U, 500U, 500U)) << "once, although two seconds began";
    renderAt(5001);
    EXPECT_THAT(timer_.sleeps, ElementsAre(500U, 500U, 500U)) << "0.3 seconds after the last: not busy";
}

TEST_F(StressWindowRun, NeverSleepsAtFullLoad) {
    for (std::int64_t milliseconds = 0; milliseconds <= 5000; milliseconds += 10) {
        renderAt(milliseconds);
    }
    EXPECT_THAT(timer_.sleeps, ElementsAre(0U, 0U, 0U, 0U, 0U));
}

TEST_F(StressWindowRun, SendsTheTemperatureOfABurnInOnceASecond) {
    controller_.burnInActive = true;
    start(1000);
    for (const std::int64_t milliseconds : {500, 1000, 1500, 2000}) {
        renderAt(milliseconds);
    }
    EXPECT_THAT(reporter_.events, ElementsAre("report 0 [VIDEO_CARD_BURN_IN_TEMPERATURE](48)",
                                              "report 0 [VIDEO_CARD_BURN_IN_TEMPERATURE](48)"));
}

TEST_F(StressWindowRun, KeepsTheSignOfATemperatureBelowZero) {
    controller_.burnInActive = true;
    card_.values->temperature = -7;
    start(1000);
    renderAt(1000);
    EXPECT_THAT(reporter_.events, ElementsAre("report 0 [VIDEO_CARD_BURN_IN_TEMPERATURE](-7)"));
}

TEST_F(StressWindowRun, SendsNoTemperatureWithoutASensorOrWithoutBurnIn) {
    start(1000);
    renderAt(1000);
    controller_.burnInActive = true;
    card_.values->temperature.reset();
    start(1000);
    renderAt(2000);
    EXPECT_THAT(reporter_.events, IsEmpty());
}

TEST_F(StressWindowRun, SendsNoTemperatureInASecondInWhichTheLoadIsNotBusy) {
    controller_.burnInActive = true;
    start(1000);
    renderAt(1001);
    renderAt(2000); // 0.999 seconds after the last
    EXPECT_EQ(reporter_.events.size(), 1U);
    renderAt(3000);
    EXPECT_EQ(reporter_.events.size(), 2U);
}

TEST_F(StressWindowRun, SamplesForTheStatisticsAndTheOverlay) {
    sampleAt(1000);
    card_.values->temperature.reset();
    script_.renderer.fps = 30;
    sampleAt(2000);
    ASSERT_EQ(script_.overlays.size(), 2U);
    EXPECT_EQ(script_.overlays[0].temperature, 48);
    EXPECT_TRUE(script_.overlays[0].temperatureValid);
    EXPECT_FALSE(script_.overlays[1].temperatureValid);
    EXPECT_EQ(script_.overlays[1].fps, 30.0F);
    EXPECT_EQ(statistics_.fps.count, 2U);
    EXPECT_EQ(statistics_.temperature.count, 1U);
    EXPECT_THAT(codes_, IsEmpty());
    EXPECT_EQ(script_.renderer.readBacks, 0) << "the picture is read at the end only";
}

TEST_F(StressWindowRun, EndsWith1WhenTheTimeIsUpAndThePicturesWereEqual) {
    sampleAt(19'999);
    EXPECT_THAT(codes_, IsEmpty());
    sampleAt(20'000);
    EXPECT_THAT(codes_, ElementsAre(1));
    EXPECT_EQ(script_.renderer.readBacks, 1);
}

TEST_F(StressWindowRun, EndsWith4WhenAnyWordOfTheComparisonIsNotZero) {
    for (std::size_t word = 0; word < script_.renderer.picture.size(); ++word) {
        codes_.clear();
        script_.renderer.picture.assign(16, 0);
        script_.renderer.picture[word] = 0x01000000;
        sampleAt(20'000);
        EXPECT_THAT(codes_, ElementsAre(4, 4)) << word;
    }
}

TEST_F(StressWindowRun, LooksAtNoMoreThanWidthTimesHeightWords) {
    script_.renderer.picture.push_back(1);
    sampleAt(20'000);
    EXPECT_THAT(codes_, ElementsAre(1));
}

TEST_F(StressWindowRun, EndsWith1WhenTheComparisonCannotBeRead) {
    script_.renderer.readable = false;
    script_.renderer.picture[0] = 1;
    sampleAt(20'000);
    EXPECT_THAT(codes_, ElementsAre(1));
}

TEST_F(StressWindowRun, DoesNotFindADifferenceThatPassedBeforeThePeriodsEnd) {
    script_.renderer.picture[3] = 1;
    sampleAt(1000);
    sampleAt(19'000);
    script_.renderer.picture[3] = 0;
    sampleAt(20'000);
    EXPECT_THAT(codes_, ElementsAre(1));
}

TEST_F(StressWindowRun, EndsWith1AtASystemEventAndTheTickGoesOn) {
    arguments_.systemEvents->flags = 0x80;
    sampleAt(1000);
    EXPECT_THAT(codes_, ElementsAre(1));
    EXPECT_EQ(statistics_.fps.count, 1U);
    EXPECT_THAT(reporter_.events, IsEmpty()) << "the message follows when the window has ended";
}

TEST_F(StressWindowRun, IsNotEndedByAnEventThatSpoilsNothing) {
    arguments_.systemEvents->flags = 0x14;
    sampleAt(1000);
    EXPECT_THAT(codes_, IsEmpty());
}

TEST_F(StressWindowRun, LivesWithoutTheHostsEvents) {
    arguments_.systemEvents.reset();
    sampleAt(20'000);
    EXPECT_THAT(codes_, ElementsAre(1));
}

TEST_F(StressWindowRun, BeginsAgainWhenItIsInfinite) {
    controller_.deadline.infinite = true;
    start(20);
    sampleAt(20'000);
    EXPECT_EQ(restarts_, 1);
    EXPECT_THAT(codes_, IsEmpty());
    sampleAt(19'000);
    EXPECT_EQ(restarts_, 1);
    sampleAt(20'500);
    EXPECT_EQ(restarts_, 2);
    EXPECT_EQ(script_.renderer.readBacks, 2) << "each period ends with a look at the picture";
}

TEST_F(StressWindowRun, ThatIsInfiniteEndsWithTheFirstPeriodWhoseLastFrameDiffers) {
    controller_.deadline.infinite = true;
    start(20);
    sampleAt(20'000);
    script_.renderer.picture[0] = 7;
    sampleAt(10'000);
    EXPECT_THAT(codes_, IsEmpty()) << "not before the period's end";
    sampleAt(20'000);
    EXPECT_THAT(codes_, ElementsAre(4));
}

TEST_F(StressWindowRun, PausesLoadAndTemperatureAfterARestartUntilTheClockHasCaughtUpAsItStands) {
    controller_.deadline.infinite = true;
    controller_.burnInActive = true;
    controller_.loadFraction = 0.75;
    start(3);
    renderAt(1000);
    elapsed_ = 1250;
    renderAt(2000);
    EXPECT_EQ(timer_.sleeps.size(), 2U);
    sampleAt(3000);
    ASSERT_EQ(restarts_, 1);
    const auto sleeps = timer_.sleeps.size();
    for (const std::int64_t milliseconds : {500, 1000, 1500, 2000, 2900}) {
        renderAt(milliseconds);
    }
    EXPECT_EQ(timer_.sleeps.size(), sleeps) << "the second 2 was the last one before the restart";
    renderAt(3000);
    EXPECT_EQ(timer_.sleeps.size(), sleeps + 1);
    EXPECT_EQ(std::ranges::count(reporter_.events, "report 0 [VIDEO_CARD_BURN_IN_TEMPERATURE](48)"), 3);
}

TEST_F(StressWindowRun, TellsItsProgressAfreshAfterARestart) {
    controller_.deadline.infinite = true;
    start(10);
    renderAt(9'950);
    sampleAt(10'000);
    renderAt(200);
    EXPECT_THAT(reporter_.events, ElementsAre("progress 99", "progress 2"));
}

} // namespace
} // namespace vexil::tests
