#include "host/core/live_values.h"
#include "host/core/value_text.h"
#include "host/fake_module/fake_module.h"

#include <gtest/gtest.h>

namespace vexil::host {
namespace {

using tests::FakeCase;
using tests::FakeModule;

TEST(Temperature, IsReadFromTheToolsLine) {
    EXPECT_EQ(temperatureOf(R"({"deviceId": "0100", "deviceName": "A", "temperatureCelsius": 45, )"
                            R"("temperatureFahrenheit": 113})"),
              45);
    EXPECT_EQ(temperatureOf(R"({"deviceId": "0100", "deviceName": "A", "temperatureCelsius": -4, )"
                            R"("temperatureFahrenheit": 24})"),
              -4);
}

TEST(Temperature, IsAbsentWhereTheToolWritesHyphens) {
    EXPECT_FALSE(temperatureOf(R"({"deviceId": "0", "deviceName": "A", "temperatureCelsius": "--", )"
                               R"("temperatureFahrenheit": "--"})"));
    EXPECT_FALSE(temperatureOf("SOME_KEY"));
}

TEST(Temperature, IsReadBehindANameWithQuotationMarks) {
    EXPECT_EQ(temperatureOf(R"({"deviceId": "0", "deviceName": "12" "temperatureCelsius": 7", )"
                            R"("temperatureCelsius": 50, "temperatureFahrenheit": 122})"),
              50);
}

TEST(LiveValues, TakeTheTemperatureFromTheThermalTool) {
    FakeModule module(FakeCase::Scripted);
    const auto cards = scanCards(module);
    const auto live = readLiveValues(cards, liveSources(module, 4));
    ASSERT_EQ(live.size(), 2U);
    EXPECT_EQ(live[0].temperatureCelsius, 45);
    EXPECT_FALSE(live[0].usagePercent);
    EXPECT_FALSE(live[0].freeMemoryBytes);
}

TEST(LiveValues, DoNotWaitForAToolThatNoWorkerRuns) {
    FakeModule module(FakeCase::NoWorker);
    const auto live = readLiveValues(scanCards(module), liveSources(module, 1));
    EXPECT_FALSE(live.at(0).temperatureCelsius);
}

TEST(LiveValues, AreFilledByEachSourceThatKnowsThem) {
    class LoadSource final : public LiveSource {
        void read(const Card&, LiveValues& values) override { values.usagePercent = 7; }
    };
    FakeModule module(FakeCase::Scripted);
    auto sources = liveSources(module, 4);
    sources.push_back(std::make_unique<LoadSource>());
    const auto live = readLiveValues(scanCards(module), sources);
    EXPECT_EQ(live[1].temperatureCelsius, 45);
    EXPECT_EQ(live[1].usagePercent, 7U);
}

TEST(LiveValues, AreDescribedWithTheirUnits) {
    LiveValues live;
    EXPECT_TRUE(describeLive(live, {}).empty());
    live = {45, 7, 2040109465};
    using Pair = std::pair<std::string, std::string>;
    EXPECT_EQ(describeLive(live, {}),
              (std::vector<Pair>{
                  {"HOST_TEMPERATURE", "45 °C"}, {"HOST_LOAD", "7 %"}, {"HOST_FREE_MEMORY", "1.9 GiB"}}));
}

TEST(Durations, AreDescribedFromMillisecondsToHours) {
    using Seconds = std::chrono::duration<double>;
    EXPECT_EQ(describeDuration(Seconds(0.0124)), "12 ms");
    EXPECT_EQ(describeDuration(Seconds(0.0996)), "0.1 s");
    EXPECT_EQ(describeDuration(Seconds(59.9)), "59.9 s");
    EXPECT_EQ(describeDuration(Seconds(59.97)), "1:00 min");
    EXPECT_EQ(describeDuration(Seconds(125)), "2:05 min");
    EXPECT_EQ(describeDuration(Seconds(3601)), "1:00:01 h");
}

} // namespace
} // namespace vexil::host
