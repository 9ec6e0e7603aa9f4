#include "module/video_card/stress/stress_stop_check.h"

#include "core/test_result.h"
#include "support/recording_reporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::stressStopCheck;
using testing::ElementsAre;
using testing::IsEmpty;

class StressStop : public testing::Test {
protected:
    std::uint8_t cancel_ = 0;
    RecordingReporter reporter_;
    core::TestRunArguments arguments_{{}, &cancel_, &reporter_, std::make_shared<core::SystemEventState>()};
};

TEST_F(StressStop, LetsARunGoOn) {
    EXPECT_EQ(stressStopCheck(arguments_), TestResult::Passed);
    EXPECT_THAT(reporter_.events, IsEmpty());
}

TEST_F(StressStop, ByACancelSaysNothing) {
    cancel_ = 1;
    EXPECT_EQ(stressStopCheck(arguments_), TestResult::NotCompleted);
    EXPECT_THAT(reporter_.events, IsEmpty());
}

TEST_F(StressStop, ByASystemEventIsReportedAndThenTheProgressIsSet) {
    cancel_ = 1;
    arguments_.systemEvents->flags = 1;
    EXPECT_EQ(stressStopCheck(arguments_), TestResult::NotCompleted);
    EXPECT_THAT(reporter_.events,
                ElementsAre("report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_"
                            "HAS_HAPPENED",
                            "progress 100"));
}

TEST_F(StressStop, LooksAtTheBitsOf235Only) {
    for (std::uint32_t bit = 0; bit < 32; ++bit) {
        arguments_.systemEvents->flags = 1U << bit;
        const bool stops = (235U >> bit & 1U) != 0;
        EXPECT_EQ(stressStopCheck(arguments_), stops ? TestResult::NotCompleted : TestResult::Passed) << bit;
    }
}

TEST_F(StressStop, CountsOnlyTheCancelWhereTheHostKeepsNoEvents) {
    arguments_.systemEvents.reset();
    EXPECT_EQ(stressStopCheck(arguments_), TestResult::Passed);
    cancel_ = 1;
    EXPECT_EQ(stressStopCheck(arguments_), TestResult::NotCompleted);
}

} // namespace
} // namespace vexil::tests
