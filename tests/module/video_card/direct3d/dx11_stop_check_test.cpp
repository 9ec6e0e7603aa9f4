#include "module/video_card/direct3d/dx11_stop_check.h"
#include "support/recording_reporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using module::video_card::dx11StopCheck;
using module::video_card::Dx11StopManner;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* aborted =
    "report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";

class Dx11StopCheck : public testing::Test {
protected:
    Dx11StopCheck() {
        arguments_.cancelRequested = &cancel_;
        arguments_.reporter = &reporter_;
        arguments_.systemEvents = std::make_shared<core::SystemEventState>();
    }

    std::uint8_t cancel_ = 0;
    RecordingReporter reporter_;
    core::TestRunArguments arguments_;
};

TEST_F(Dx11StopCheck, LetsTheTestGoOnWhenNothingHappened) {
    EXPECT_FALSE(dx11StopCheck(arguments_));
    EXPECT_FALSE(dx11StopCheck(arguments_, Dx11StopManner::progressFirst));
    EXPECT_THAT(reporter_.events, IsEmpty());
}

TEST_F(Dx11StopCheck, ReportsASystemEventBeforeItSetsTheProgress) {
    arguments_.systemEvents->flags = 1;
    EXPECT_TRUE(dx11StopCheck(arguments_));
    EXPECT_THAT(reporter_.events, ElementsAre(aborted, "progress 100"));
}

TEST_F(Dx11StopCheck, ReportsASystemEventBehindTheProgressInTheOtherManner) {
    arguments_.systemEvents->flags = 1;
    EXPECT_TRUE(dx11StopCheck(arguments_, Dx11StopManner::progressFirst));
    EXPECT_THAT(reporter_.events, ElementsAre("progress 100", aborted));
}

TEST_F(Dx11StopCheck, IsSilentForAUsersCancel) {
    cancel_ = 1;
    EXPECT_TRUE(dx11StopCheck(arguments_));
    EXPECT_THAT(reporter_.events, IsEmpty());
}

TEST_F(Dx11StopCheck, SetsTheProgressForAUsersCancelInTheOtherManner) {
    cancel_ = 0x80;
    EXPECT_TRUE(dx11StopCheck(arguments_, Dx11StopManner::progressFirst));
    EXPECT_THAT(reporter_.events, ElementsAre("progress 100"));
}

TEST_F(Dx11StopCheck, LooksAtTheSystemEventsBeforeTheCancel) {
    cancel_ = 1;
    arguments_.systemEvents->flags = 0x20;
    EXPECT_TRUE(dx11StopCheck(arguments_));
    EXPECT_THAT(reporter_.events, ElementsAre(aborted, "progress 100"));
}

TEST_F(Dx11StopCheck, StopsForSixBitsOfTheLowByteOnly) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        arguments_.systemEvents->flags = 1U << bit;
        const bool stops = bit < 8 && bit != 2 && bit != 4;
        EXPECT_EQ(dx11StopCheck(arguments_), stops) << "bit " << bit;
    }
}

TEST_F(Dx11StopCheck, LooksAtTheCancelAloneWithoutSystemEvents) {
    arguments_.systemEvents.reset();
    EXPECT_FALSE(dx11StopCheck(arguments_));
    cancel_ = 1;
    EXPECT_TRUE(dx11StopCheck(arguments_));
    EXPECT_THAT(reporter_.events, IsEmpty());
}

TEST_F(Dx11StopCheck, HoldsNoLockWhileItReports) {
    arguments_.systemEvents->flags = 1;
    reporter_.onProgress = [&](std::uint8_t) {
        EXPECT_TRUE(arguments_.systemEvents->mutex.try_lock());
        arguments_.systemEvents->mutex.unlock();
    };
    EXPECT_TRUE(dx11StopCheck(arguments_));
    EXPECT_EQ(reporter_.events.size(), 2U);
}

} // namespace
} // namespace vexil::tests
