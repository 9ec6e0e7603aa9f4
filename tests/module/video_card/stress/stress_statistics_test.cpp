#include "module/video_card/stress/stress_statistics.h"

#include "support/recording_reporter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>

namespace vexil::tests {
namespace {

using module::video_card::StressSample;
using module::video_card::StressStatistics;
using testing::ElementsAre;

class StressResults : public testing::Test {
protected:
    static StressSample temperature(std::int64_t celsius) { return {0, false, celsius, true, 0, false}; }
    static StressSample usage(std::uint64_t percent) { return {0, false, 0, false, percent, true}; }
    static StressSample fps(float value) { return {value, true, 0, false, 0, false}; }

    void expectLines(const std::string& minimum, const std::string& maximum, const std::string& average) {
        statistics_.reportResults();
        EXPECT_THAT(reporter_.events, ElementsAre("report 0 MINIMUM" + minimum, "report 0 MAXIMUM" + maximum,
                                                  "report 0 AVERAGE" + average));
    }

    RecordingReporter reporter_;
    core::TestRunArguments arguments_{{}, nullptr, &reporter_, {}};
    StressStatistics statistics_{arguments_};
};

TEST_F(StressResults, StartWhereAnyValueReplacesThem) {
    EXPECT_EQ(statistics_.fps.sum, 0.0F);
    EXPECT_EQ(statistics_.fps.minimum, 3.4028235e38F);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(statistics_.fps.maximum), 0x00800000U);
    EXPECT_EQ(statistics_.temperature.minimum, 0x7FFFFFFF);
    EXPECT_EQ(statistics_.temperature.maximum, 0);
    EXPECT_EQ(statistics_.usage.minimum, 0xFFFFFFFFU);
    EXPECT_EQ(statistics_.usage.maximum, 0U);
    EXPECT_EQ(statistics_.fps.count + statistics_.temperature.count + statistics_.usage.count, 0U);
}

TEST_F(StressResults, HaveTheThreeItemsInTheirOrderWithTabsAndTheDegreeSign) {
    statistics_.addSample({57.4F, true, 48, true, 95, true});
    statistics_.addSample({60.0F, true, 51, true, 98, true});
    expectLines(" \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 48\xC2\xB0"
                "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 95% \t/\t GPU_STRESS_TEST_INFO_FPS: 57",
                " \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 51\xC2\xB0"
                "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 98% \t/\t GPU_STRESS_TEST_INFO_FPS: 60",
                " \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 49\xC2\xB0"
                "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 96% \t/\t GPU_STRESS_TEST_INFO_FPS: 59");
}

TEST_F(StressResults, AreThreeBareWordsWithoutASample) { expectLines("", "", ""); }

TEST_F(StressResults, LeaveOutTheTemperatureOfACardWithoutASensor) {
    statistics_.addSample({57.0F, true, 0, false, 95, true});
    const std::string items = " \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 95% \t/\t GPU_STRESS_TEST_INFO_FPS: 57";
    expectLines(items, items, items);
}

TEST_F(StressResults, LeaveOutAUsageThatWasNeverAnythingButZero) {
    statistics_.addSample(usage(0));
    statistics_.addSample(usage(0));
    EXPECT_EQ(statistics_.usage.count, 2U);
    expectLines("", "", "");
}

TEST_F(StressResults, ShowTwoDashesForAValueNotGreaterThanZero) {
    statistics_.addSample(usage(0));
    statistics_.addSample(usage(1));
    statistics_.addSample(fps(0));
    expectLines(" \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: --% \t/\t GPU_STRESS_TEST_INFO_FPS: --",
                " \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 1% \t/\t GPU_STRESS_TEST_INFO_FPS: 0",
                " \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: --% \t/\t GPU_STRESS_TEST_INFO_FPS: --");
}

TEST_F(StressResults, DivideWholeNumbersAsSuch) {
    for (const std::int64_t celsius : {40, 40, 41}) {
        statistics_.addSample(temperature(celsius));
    }
    for (const std::uint64_t percent : {10U, 11U, 11U}) {
        statistics_.addSample(usage(percent));
    }
    for (const float value : {1.0F, 2.0F, 2.0F}) {
        statistics_.addSample(fps(value));
    }
    statistics_.reportResults();
    EXPECT_EQ(reporter_.events.back(), "report 0 AVERAGE \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 40\xC2\xB0"
                                       "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 10% \t/\t "
                                       "GPU_STRESS_TEST_INFO_FPS: 2")
        << "40.33 and 10.67 are truncated, 1.67 is rounded";
}

TEST_F(StressResults, DivideATemperatureBelowZeroWithItsSign) {
    statistics_.addSample(temperature(-10));
    statistics_.addSample(temperature(4));
    expectLines(" \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: --\xC2\xB0"
                "C",
                " \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 4\xC2\xB0"
                "C",
                " \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: --\xC2\xB0"
                "C");
    EXPECT_EQ(statistics_.temperature.sum, -6);
}

TEST_F(StressResults, TakeInOnlyWhatIsValid) {
    statistics_.addSample({10.0F, false, 20, false, 30, false});
    EXPECT_EQ(statistics_.fps.count, 0U);
    EXPECT_EQ(statistics_.temperature.count, 0U);
    EXPECT_EQ(statistics_.usage.count, 0U);
    statistics_.addSample(temperature(20));
    EXPECT_EQ(statistics_.temperature.count, 1U);
    EXPECT_EQ(statistics_.fps.count + statistics_.usage.count, 0U);
}

TEST_F(StressResults, FollowValuesInBothDirections) {
    for (const float value : {5.0F, 3.0F, 9.0F, 4.0F}) {
        statistics_.addSample(fps(value));
    }
    EXPECT_EQ(statistics_.fps.minimum, 3.0F);
    EXPECT_EQ(statistics_.fps.maximum, 9.0F);
    EXPECT_EQ(statistics_.fps.sum, 21.0F);
    EXPECT_EQ(statistics_.fps.count, 4U);
}

TEST_F(StressResults, SurviveASensorsNonsense) {
    statistics_.addSample(temperature(std::numeric_limits<std::int64_t>::max()));
    statistics_.addSample(temperature(1));
    EXPECT_EQ(statistics_.temperature.minimum, 1);
    EXPECT_EQ(statistics_.temperature.maximum, std::numeric_limits<std::int64_t>::max());
    statistics_.addSample(usage(std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(statistics_.usage.minimum, 0xFFFFFFFFU) << "a larger value does not lower the start";
}

} // namespace
} // namespace vexil::tests
