#include "module/video_card/statistics/adl/adl_scanner.h"

#include "adl_loader.h"
#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/adl/adl_device_statistics.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using namespace module::video_card;

class AdlScanner : public testing::Test {
protected:
    StatisticsSources scan() {
        StatisticsSources sources;
        ADLDeviceStatisticsScanner scanner(amd_.contexts);
        EXPECT_EQ(&scanner.scan(sources), &sources) << "the vector is also the result";
        return sources;
    }
    static bool matches(const VideoCardStatistics& source, const char* location) {
        AdapterRecord adapter;
        adapter.location = location;
        return source.matches(adapter);
    }

    AdlFixture amd_;
};

template <typename Source>
bool is(const std::unique_ptr<VideoCardStatistics>& source) {
    return dynamic_cast<const Source*>(source.get()) != nullptr;
}

TEST_F(AdlScanner, FindsNothingWithoutTheLibrary) {
    amd_.loader.createStatus = -1;
    EXPECT_TRUE(scan().empty());
}

TEST_F(AdlScanner, MakesTheClassOfTheCardsGeneration) {
    put(healthyCard(5));
    EXPECT_TRUE(is<ADLOD5DeviceStatistics>(scan().at(0)));
    put(healthyCard(6));
    EXPECT_TRUE(is<ADLOD6DeviceStatistics>(scan().at(0)));
    put(healthyCard(7));
    EXPECT_TRUE(is<ADLDNDeviceStatistics>(scan().at(0)));
    for (const std::int32_t version : {-1, 0, 1, 4, 8, 0x7FFFFFFF}) {
        put(healthyCard(version));
        EXPECT_TRUE(scan().empty()) << version;
    }
}

TEST_F(AdlScanner, GivesASourceItsAdapterIndexAndLocation) {
    put(healthyCard(7));
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_TRUE(matches(*sources[0], "03:00.0"));
    std::int64_t celsius = 0;
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Ok)
        << "the stand-in knows adapter 4 only";
}

TEST_F(AdlScanner, MakesOneSourceOfACardWithThreeAdapters) {
    auto card = healthyCard(7);
    card.adapters = {adapterAt(4, 3, 0, 0), adapterAt(5, 3, 0, 0), adapterAt(6, 3, 0, 1)};
    put(card);
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_TRUE(matches(*sources[0], "03:00.0"));
}

TEST_F(AdlScanner, MakesOneSourceOfTwoCardsWithTheSameDeviceAndFunction) {
    auto second = healthyCard(7);
    second.adapters = {adapterAt(5, 7, 0, 0)};
    simulated::setAdlMachine({{}, {healthyCard(7), second}});
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_TRUE(matches(*sources[0], "03:00.0"));
}

TEST_F(AdlScanner, MakesTwoSourcesOfCardsThatDifferInAllThreeNumbersInTheirOrder) {
    auto first = healthyCard(6);
    first.adapters = {adapterAt(1, 2, 1, 1)};
    auto second = healthyCard(7);
    second.adapters = {adapterAt(2, 1, 0, 0)};
    simulated::setAdlMachine({{}, {first, second}});
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_TRUE(is<ADLDNDeviceStatistics>(sources[0])) << "in ascending order";
    EXPECT_TRUE(is<ADLOD6DeviceStatistics>(sources[1]));
}

TEST_F(AdlScanner, SkipsACardWhoseGenerationFailsWithSupportedSet) {
    auto card = healthyCard(7);
    card.statuses = {{"ADL2_Overdrive_Caps", -1}};
    put(card);
    EXPECT_TRUE(scan().empty());
}

TEST_F(AdlScanner, GoesOnWithTheVersionIfTheGenerationFailsWithSupportedLeftAtZero) {
    auto card = healthyCard(7);
    card.statuses = {{"ADL2_Overdrive_Caps", -1}};
    card.overdriveSupported.reset();
    put(card);
    EXPECT_EQ(scan().size(), 1U);
    card.overdriveVersion.reset();
    put(card);
    EXPECT_TRUE(scan().empty()) << "the version test, not the skip test, leaves this one out";
}

platform::adl::ContextHandle sentContext = &sentContext;
std::vector<std::int32_t> sent;

platform::adl::Status lookAtCaps(platform::adl::ContextHandle context, std::int32_t adapter,
                                 std::int32_t* supported, std::int32_t* enabled, std::int32_t* version) {
    sentContext = context;
    sent = {adapter, *supported, *enabled, *version};
    return platform::adl::ok;
}

TEST_F(AdlScanner, AsksForTheGenerationInTheDefaultContextWithZeroes) {
    amd_.loader.replacements["ADL2_Overdrive_Caps"] = addressOf(lookAtCaps);
    put(healthyCard(7));
    EXPECT_TRUE(scan().empty());
    EXPECT_EQ(sentContext, nullptr);
    EXPECT_EQ(sent, (std::vector<std::int32_t>{4, 0, 0, 0}));
}

platform::adl::Status onlyEnabled(platform::adl::ContextHandle, std::int32_t, std::int32_t* supported,
                                  std::int32_t* enabled, std::int32_t* version) {
    *supported = 0;
    *enabled = 1;
    *version = 7;
    return platform::adl::error;
}
platform::adl::Status onlySupported(platform::adl::ContextHandle, std::int32_t, std::int32_t* supported,
                                    std::int32_t* enabled, std::int32_t* version) {
    *supported = 1;
    *enabled = 0;
    *version = 7;
    return platform::adl::error;
}

TEST_F(AdlScanner, LooksAtWhatIsSupportedAndNotAtWhatIsEnabled) {
    put(healthyCard(7));
    amd_.loader.replacements["ADL2_Overdrive_Caps"] = addressOf(onlyEnabled);
    EXPECT_EQ(scan().size(), 1U);
}

TEST_F(AdlScanner, SkipsACardThatFailsAndIsSupportedThoughNotEnabled) {
    put(healthyCard(7));
    amd_.loader.replacements["ADL2_Overdrive_Caps"] = addressOf(onlySupported);
    EXPECT_TRUE(scan().empty());
}

TEST_F(AdlScanner, GivesACardNothingOfTheOneBeforeIt) {
    auto first = healthyCard(7);
    first.adapters = {adapterAt(1, 1, 0, 0)};
    simulated::AdlCardSection silent;
    silent.adapters = {adapterAt(2, 2, 1, 1)};
    simulated::setAdlMachine({{}, {first, silent}});
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 1U) << "a version that was not told is 0, whatever the last one was";
    EXPECT_TRUE(matches(*sources[0], "01:00.0"));
}

TEST_F(AdlScanner, GoesOnWithTheVersionOfACardThatIsNotSupported) {
    auto card = healthyCard(6);
    card.overdriveSupported = 0;
    put(card);
    EXPECT_EQ(scan().size(), 1U);
}

TEST_F(AdlScanner, MakesASourceOfACardWhoseTableIsMissingAndItsTemperatureIsUnavailable) {
    amd_.loader.replacements["ADL2_OverdriveN_PerformanceStatus_Get"] = nullptr;
    put(healthyCard(7));
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 1U);
    std::int64_t celsius = 0;
    std::uint64_t bytes = 0;
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Unavailable);
    EXPECT_EQ(sources[0]->getFreeMemory(bytes), VideoCardStatisticsStatus::Ok);
}

TEST_F(AdlScanner, StartsTheLibraryOnceForAllScans) {
    put(healthyCard(7));
    static_cast<void>(scan());
    static_cast<void>(scan());
    EXPECT_EQ(amd_.loader.count("create"), 1);
    EXPECT_EQ(amd_.loader.count("destroy"), 0);
}

/// The load of an AMD card comes from the next source of its composite.
class BusyCard final : public VideoCardStatistics {
public:
    bool matches(const AdapterRecord&) const override { return true; }
    VideoCardStatisticsStatus getTemperature(std::int64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override {
        percent = 31;
        return VideoCardStatisticsStatus::Ok;
    }
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
};

TEST_F(AdlScanner, LeavesTheLoadOfItsCardToTheNextSource) {
    put(healthyCard(7));
    StatisticsScans scans;
    scans.adl = [&](StatisticsSources& sources) { ADLDeviceStatisticsScanner(amd_.contexts).scan(sources); };
    scans.d3dkmt = [](StatisticsSources& sources) { sources.push_back(std::make_unique<BusyCard>()); };
    auto lists = scanStatistics(scans);
    AdapterRecord adapter;
    adapter.location = "03:00.0";
    const auto card = takeSources(lists, adapter);
    std::uint64_t percent = 0;
    std::int64_t celsius = 0;
    EXPECT_EQ(card->getUsage(percent), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(percent, 31U);
    EXPECT_EQ(card->getTemperature(celsius), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius, 52);
}

} // namespace
} // namespace vexil::tests
