#include "module/video_card/statistics/intel/intel_device_statistics.h"

#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/statistics_sources.h"
#include "support/fake_cpu_machine.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <stdexcept>

namespace vexil::tests {
namespace {

using namespace module::video_card;

AdapterRecord cardOf(const std::string& vendorId) {
    AdapterRecord record;
    record.vendorId = vendorId;
    return record;
}

class IntelStatistics : public testing::Test {
protected:
    void show(std::uint64_t maximum, std::uint64_t distance) {
        machine_.service.msrs = {{0x19C, 1ULL << 31 | distance << 16}, {0x1A2, maximum << 16}};
    }

    FakeCpuMachine machine_;
    std::int64_t celsius_ = 1;
};

TEST_F(IntelStatistics, AnswerForTheVendorIdOfIntelOnly) {
    const IntelDeviceStatistics source(machine_);
    EXPECT_TRUE(source.matches(cardOf("8086")));
    EXPECT_FALSE(source.matches(cardOf("10DE")));
    EXPECT_FALSE(source.matches(cardOf("80860")));
    EXPECT_FALSE(source.matches(cardOf("808")));
    EXPECT_FALSE(source.matches(cardOf("")));
}

TEST_F(IntelStatistics, GiveTheTemperatureOfTheProcessor) {
    show(100, 45);
    IntelDeviceStatistics source(machine_);
    EXPECT_EQ(source.getTemperature(celsius_), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius_, 55);
}

TEST_F(IntelStatistics, TruncateTowardZero) {
    machine_.vendor = "AuthenticAMD";
    machine_.caption = "AMD64 Family 25 Model 33 Stepping 0";
    IntelDeviceStatistics source(machine_);
    machine_.service.pciRegisters = {{100, 375U << 21}}; // 46.875 degrees
    EXPECT_EQ(source.getTemperature(celsius_), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius_, 46);
    machine_.service.pciRegisters = {{100, 375U << 21 | 1U << 19}}; // -2.125 degrees
    EXPECT_EQ(source.getTemperature(celsius_), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius_, -2);
}

TEST_F(IntelStatistics, WriteMinus999999WhereTheSensorFails) {
    IntelDeviceStatistics source(machine_);
    EXPECT_EQ(source.getTemperature(celsius_), VideoCardStatisticsStatus::Unavailable);
    EXPECT_EQ(celsius_, -999999);
}

TEST_F(IntelStatistics, AskTheSensorAfreshEachTime) {
    IntelDeviceStatistics source(machine_);
    EXPECT_EQ(source.getTemperature(celsius_), VideoCardStatisticsStatus::Unavailable);
    show(100, 30);
    EXPECT_EQ(source.getTemperature(celsius_), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius_, 70);
}

TEST_F(IntelStatistics, GiveTheLowestNumberForATemperatureBeyondSixtyThreeBits) {
    show(20, 21);
    IntelDeviceStatistics source(machine_);
    EXPECT_EQ(source.getTemperature(celsius_), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius_, std::numeric_limits<std::int64_t>::min());
}

TEST_F(IntelStatistics, KnowNothingButTheTemperature) {
    show(100, 45);
    IntelDeviceStatistics source(machine_);
    std::uint64_t value = 77;
    EXPECT_EQ(source.getUsage(value), VideoCardStatisticsStatus::Unavailable);
    EXPECT_EQ(source.getTotalMemory(value), VideoCardStatisticsStatus::Unavailable);
    EXPECT_EQ(source.getFreeMemory(value), VideoCardStatisticsStatus::Unavailable);
    EXPECT_EQ(value, 77U);
}

TEST_F(IntelStatistics, AreFoundOnceWhateverCardsThereAre) {
    StatisticsSources sources;
    IntelDeviceStatisticsScanner scanner(machine_);
    EXPECT_EQ(&scanner.scan(sources), &sources);
    EXPECT_EQ(sources.size(), 1U);
}

TEST_F(IntelStatistics, GoToTheFirstOfTwoCardsOfIntel) {
    show(100, 45);
    StatisticsSourceLists lists;
    IntelDeviceStatisticsScanner(machine_).scan(lists.intel);
    EXPECT_EQ(takeSources(lists, cardOf("8086"))->getTemperature(celsius_), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(takeSources(lists, cardOf("8086"))->getTemperature(celsius_),
              VideoCardStatisticsStatus::Unavailable);
}

TEST_F(IntelStatistics, EndTheScanOfAllSourcesForAnUnknownProcessor) {
    StatisticsScans scans;
    bool scannedFurther = false;
    scans.intel = [&](StatisticsSources& sources) { IntelDeviceStatisticsScanner(machine_).scan(sources); };
    scans.d3dkmt = [&](StatisticsSources&) { scannedFurther = true; };

    machine_.vendor = "HygonGenuine";
    EXPECT_THROW(static_cast<void>(scanStatistics(scans)), std::runtime_error);
    machine_.vendor = "AuthenticAMD";
    machine_.caption = "AMD64 Family 26 Model 2 Stepping 1";
    EXPECT_THROW(static_cast<void>(scanStatistics(scans)), std::runtime_error);
    machine_.caption = "AMD64 Model 2 Family";
    EXPECT_THROW(static_cast<void>(scanStatistics(scans)), std::out_of_range);
    EXPECT_FALSE(scannedFurther);
}

TEST_F(IntelStatistics, SurviveAMillionAnswersOfAServiceThatTalksNonsense) {
    std::mt19937_64 random(20240501);
    IntelDeviceStatistics intel(machine_);
    machine_.vendor = "AuthenticAMD";
    std::vector<std::unique_ptr<IntelDeviceStatistics>> amd;
    for (const char* caption :
         {"Family 21 Model 1", "Family 21 Model 20", "Family 21 Model 100", "Family 25 Model 1"}) {
        machine_.caption = caption;
        amd.push_back(std::make_unique<IntelDeviceStatistics>(machine_));
    }
    std::size_t answered = 0;
    for (int i = 0; i < 1'000'000; ++i) {
        const auto bits = random();
        machine_.service.ready = (bits & 7) == 0 ? 0 : static_cast<std::int32_t>(random());
        machine_.service.writeStatus = (bits >> 3 & 7) == 0 ? static_cast<std::int32_t>(random()) : 0;
        machine_.service.accesses.clear();
        machine_.service.msrs[0x19C] = random();
        machine_.service.msrs[0x1A2] = random();
        for (const std::uint32_t offset : {100U, 164U, 188U}) {
            machine_.service.pciRegisters[offset] = static_cast<std::uint32_t>(random());
        }
        if ((bits >> 6 & 15) == 0) {
            machine_.service.msrs.erase((bits >> 10 & 1) == 0 ? 0x19C : 0x1A2);
            machine_.service.pciRegisters.clear();
        }
        auto& source = i % 2 == 0 ? intel : *amd[bits % amd.size()];
        const auto status = source.getTemperature(celsius_);
        if (status == VideoCardStatisticsStatus::Ok) {
            ++answered;
        } else {
            ASSERT_EQ(celsius_, -999999);
        }
    }
    EXPECT_GT(answered, 100'000U);
}

} // namespace
} // namespace vexil::tests
