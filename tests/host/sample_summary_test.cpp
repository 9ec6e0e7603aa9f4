#include "host/core/sample_summary.h"
#include "host/core/value_text.h"

#include <gtest/gtest.h>

namespace vexil::host {
namespace {

TEST(SampleSummaries, KeepExtremesAndMean) {
    SampleSummary summary;
    for (const std::int64_t celsius : {-5, 40, 43}) {
        LiveValues values;
        values.temperatureCelsius = celsius;
        summary.add(values);
    }
    const auto& temperature = summary.of(LiveKind::Temperature);
    EXPECT_EQ(temperature.count(), 3U);
    EXPECT_EQ(temperature.minimum(), -5);
    EXPECT_EQ(temperature.maximum(), 43);
    EXPECT_EQ(temperature.average(), 26);
}

TEST(SampleSummaries, LeaveMomentsWithoutAValueOut) {
    SampleSummary summary;
    summary.add({std::nullopt, 10, std::nullopt});
    summary.add({});
    summary.add({std::nullopt, 20, 4096});
    EXPECT_EQ(summary.of(LiveKind::Temperature).count(), 0U);
    EXPECT_EQ(summary.of(LiveKind::Load).average(), 15);
    EXPECT_EQ(summary.of(LiveKind::Load).minimum(), 10);
    EXPECT_EQ(summary.of(LiveKind::FreeMemory).count(), 1U);
    EXPECT_EQ(summary.of(LiveKind::FreeMemory).minimum(), 4096);
}

TEST(SampleSummaries, DescribeMeansWithADecimal) {
    EXPECT_EQ(describeValue(LiveKind::Temperature, 45), "45 °C");
    EXPECT_EQ(describeMean(LiveKind::Temperature, 45.25), "45.2 °C");
    EXPECT_EQ(describeMean(LiveKind::Load, 7), "7.0 %");
    EXPECT_EQ(describeMean(LiveKind::FreeMemory, 1536.0 * 1024 * 1024), "1.5 GiB");
    EXPECT_EQ(describeValue(LiveKind::FreeMemory, 0x1p64), "16.0 EiB");
    EXPECT_EQ(describeValue(LiveKind::Load, 12345678, 10), "12345678 %");
    EXPECT_EQ(describeValue(LiveKind::Load, 123456789, 10), "1.23e+08 %") << "a power of ten in 10 columns";
    EXPECT_EQ(describeMean(LiveKind::Temperature, -0x1p63, 10), "-9e+18 °C");
}

} // namespace
} // namespace vexil::host
