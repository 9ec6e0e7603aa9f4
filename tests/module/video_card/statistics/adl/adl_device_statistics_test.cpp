#include "module/video_card/statistics/adl/adl_device_statistics.h"

#include "adl_loader.h"
#include "module/video_card/adapter_record.h"

#include <gtest/gtest.h>

#include <limits>

namespace vexil::tests {
namespace {

using namespace module::video_card;
namespace adl = platform::adl;
using Status = VideoCardStatisticsStatus;

struct Temperature {
    Status status;
    std::int64_t celsius = 77;
};

struct Bytes {
    Status status;
    std::uint64_t bytes = 77;
};

template <typename Source>
Temperature temperatureOf(ADLContexts& contexts) {
    Source source(4, "03:00.0", contexts);
    Temperature answer{};
    answer.status = source.getTemperature(answer.celsius);
    return answer;
}

Bytes freeMemoryOf(ADLContexts& contexts) {
    ADLDNDeviceStatistics source(4, "03:00.0", contexts);
    Bytes answer{};
    answer.status = source.getFreeMemory(answer.bytes);
    return answer;
}

Bytes totalMemoryOf(ADLContexts& contexts) {
    ADLDNDeviceStatistics source(4, "03:00.0", contexts);
    Bytes answer{};
    answer.status = source.getTotalMemory(answer.bytes);
    return answer;
}

TEST(AdlTemperature, IsTruncatedTowardZeroAndAcceptedFromMinus50To200) {
    struct Reading {
        std::int32_t millidegrees;
        std::int64_t celsius;
        Status status;
    };
    for (const auto& [millidegrees, celsius, status] : {Reading{52'900, 52, Status::Ok},
                                                        {0, 0, Status::Ok},
                                                        {-999, 0, Status::Ok},
                                                        {200'999, 200, Status::Ok},
                                                        {201'000, 201, Status::Unavailable},
                                                        {205'000, 205, Status::Unavailable},
                                                        {-50'999, -50, Status::Ok},
                                                        {-51'000, -51, Status::Unavailable},
                                                        {999'999, 999, Status::Unavailable}}) {
        std::int64_t value = 77;
        EXPECT_EQ(convertAdlTemperature(millidegrees, value), status) << millidegrees;
        EXPECT_EQ(value, celsius) << millidegrees << ": written all the same";
    }
}

/// Generations 6 and N ask in the same way, through their own function.
template <typename Source>
class AdlDirectTemperature : public testing::Test {};

struct Six {
    using Source = ADLOD6DeviceStatistics;
    static constexpr const char* function = "ADL_Overdrive6_Temperature_Get";
};
struct Next {
    using Source = ADLDNDeviceStatistics;
    static constexpr const char* function = "ADL2_OverdriveN_Temperature_Get";
};
using Generations = testing::Types<Six, Next>;
TYPED_TEST_SUITE(AdlDirectTemperature, Generations);

TYPED_TEST(AdlDirectTemperature, IsThatOfTheCard) {
    AdlFixture amd;
    put(healthyCard(7));
    const auto answer = temperatureOf<typename TypeParam::Source>(amd.contexts);
    EXPECT_EQ(answer.status, Status::Ok);
    EXPECT_EQ(answer.celsius, 52);
}

TYPED_TEST(AdlDirectTemperature, IsUnavailableOutOfRangeAndWrittenAllTheSame) {
    AdlFixture amd;
    auto card = healthyCard(7);
    card.millidegrees = 205'000;
    put(card);
    const auto answer = temperatureOf<typename TypeParam::Source>(amd.contexts);
    EXPECT_EQ(answer.status, Status::Unavailable);
    EXPECT_EQ(answer.celsius, 205);
}

TYPED_TEST(AdlDirectTemperature, IsUnavailableIfTheCallWritesNothing) {
    AdlFixture amd;
    auto card = healthyCard(7);
    card.millidegrees.reset();
    put(card);
    const auto answer = temperatureOf<typename TypeParam::Source>(amd.contexts);
    EXPECT_EQ(answer.status, Status::Unavailable);
    EXPECT_EQ(answer.celsius, 999);
}

TYPED_TEST(AdlDirectTemperature, IsUnavailableAndUnwrittenOnAnyStatusButZero) {
    for (const std::int32_t status : {-1, 1}) {
        AdlFixture amd;
        auto card = healthyCard(7);
        card.statuses = {{TypeParam::function, status}};
        put(card);
        const auto answer = temperatureOf<typename TypeParam::Source>(amd.contexts);
        EXPECT_EQ(answer.status, Status::Unavailable);
        EXPECT_EQ(answer.celsius, 77);
    }
}

TYPED_TEST(AdlDirectTemperature, IsUnavailableWithoutTheTableOfItsGeneration) {
    AdlFixture amd;
    put(healthyCard(7));
    amd.loader.replacements[TypeParam::function] = nullptr;
    EXPECT_EQ(temperatureOf<typename TypeParam::Source>(amd.contexts).status, Status::Unavailable);
}

TYPED_TEST(AdlDirectTemperature, IsUnavailableWithoutTheLibrary) {
    AdlFixture amd;
    amd.loader.createStatus = -1;
    EXPECT_EQ(temperatureOf<typename TypeParam::Source>(amd.contexts).status, Status::Unavailable);
}

std::int32_t sentKind = 0;
std::int32_t sentMillidegrees = 0;
std::int32_t sentAdapter = 0;
adl::ContextHandle sentContext = &sentKind;

adl::Status lookAtNext(adl::ContextHandle context, std::int32_t adapter, std::int32_t kind,
                       std::int32_t* millidegrees) {
    sentContext = context;
    sentAdapter = adapter;
    sentKind = kind;
    sentMillidegrees = *millidegrees;
    return adl::error;
}

TEST(AdlNextTemperature, IsAskedOfTheDefaultContextForTheCore) {
    AdlFixture amd;
    amd.loader.replacements["ADL2_OverdriveN_Temperature_Get"] = addressOf(lookAtNext);
    temperatureOf<ADLDNDeviceStatistics>(amd.contexts);
    EXPECT_EQ(sentContext, nullptr);
    EXPECT_EQ(sentAdapter, 4);
    EXPECT_EQ(sentKind, 1);
    EXPECT_EQ(sentMillidegrees, 999'999);
}

simulated::AdlThermalController controller(std::int32_t domain, std::optional<std::int32_t> millidegrees,
                                           std::int32_t temperatureStatus) {
    return {domain, 0, millidegrees, temperatureStatus};
}

Temperature fiveTemperature(const std::vector<simulated::AdlThermalController>& controllers) {
    AdlFixture amd;
    auto card = healthyCard(5);
    card.thermalControllers = controllers;
    put(card);
    return temperatureOf<ADLOD5DeviceStatistics>(amd.contexts);
}

TEST(AdlOverdrive5InvertedLoop, UsesNoReadingWhoseCallReportsSuccess) {
    const auto answer = fiveTemperature({controller(1, 61'000, 0)});
    EXPECT_EQ(answer.status, Status::Unavailable);
    EXPECT_EQ(answer.celsius, 77) << "not even written";
}

TEST(AdlOverdrive5InvertedLoop, UsesTheReadingWhoseCallReportsFailure) {
    const auto answer = fiveTemperature({controller(1, 61'000, -1)});
    EXPECT_EQ(answer.status, Status::Ok);
    EXPECT_EQ(answer.celsius, 61);
}

TEST(AdlOverdrive5InvertedLoop, GoesOnAfterASuccessAndStopsAtTheFirstFailure) {
    const auto answer =
        fiveTemperature({controller(1, 61'000, 0), controller(1, 62'000, -1), controller(1, 63'000, -1)});
    EXPECT_EQ(answer.status, Status::Ok);
    EXPECT_EQ(answer.celsius, 62);
}

TEST(AdlOverdrive5InvertedLoop, Gives999AndUnavailableForAFailureThatWritesNothing) {
    const auto answer = fiveTemperature({controller(1, std::nullopt, -1), controller(1, 62'000, -1)});
    EXPECT_EQ(answer.status, Status::Unavailable);
    EXPECT_EQ(answer.celsius, 999);
}

TEST(AdlOverdrive5InvertedLoop, SetsTheReadingUpAnewForEachController) {
    const auto answer = fiveTemperature({controller(1, 61'000, 0), controller(1, std::nullopt, -1)});
    EXPECT_EQ(answer.status, Status::Unavailable);
    EXPECT_EQ(answer.celsius, 999) << "not the 61 of the controller before";
}

TEST(AdlOverdrive5InvertedLoop, AsksOnlyControllersOfTheGpuThatAreThere) {
    const auto answer = fiveTemperature({controller(0, 61'000, -1),
                                         controller(2, 61'000, -1),
                                         {1, -1, 61'000, -1},
                                         {std::nullopt, 0, 61'000, -1},
                                         controller(1, 65'000, -1)});
    EXPECT_EQ(answer.status, Status::Ok);
    EXPECT_EQ(answer.celsius, 65);
}

TEST(AdlOverdrive5InvertedLoop, LooksAtTenControllers) {
    std::vector<simulated::AdlThermalController> controllers(9, controller(0, 1'000, 0));
    controllers.push_back(controller(1, 64'000, -1));
    EXPECT_EQ(fiveTemperature(controllers).celsius, 64) << "the tenth";
    controllers.insert(controllers.begin(), controller(0, 1'000, 0));
    EXPECT_EQ(fiveTemperature(controllers).status, Status::Unavailable) << "not the eleventh";
}

std::int32_t sentInfoSize = -1;
std::int32_t sentTemperatureSize = -1;
adl::Status lookAtController(std::int32_t, std::int32_t, adl::ThermalControllerInfo* info) {
    sentInfoSize = info->iSize;
    info->iThermalDomain = 1;
    return adl::ok;
}
adl::Status lookAtTemperature(std::int32_t, std::int32_t, adl::Temperature* temperature) {
    sentTemperatureSize = temperature->iSize;
    sentMillidegrees = temperature->iTemperature;
    return adl::error;
}

TEST(AdlOverdrive5InvertedLoop, SendsRecordsWithASizeOfZero) {
    AdlFixture amd;
    amd.loader.replacements = {{"ADL_Overdrive5_ThermalDevices_Enum", addressOf(lookAtController)},
                               {"ADL_Overdrive5_Temperature_Get", addressOf(lookAtTemperature)}};
    temperatureOf<ADLOD5DeviceStatistics>(amd.contexts);
    EXPECT_EQ(sentInfoSize, 0);
    EXPECT_EQ(sentTemperatureSize, 0);
    EXPECT_EQ(sentMillidegrees, 999'999);
}

TEST(AdlOverdrive5Temperature, IsUnavailableWithoutTheTable) {
    AdlFixture amd;
    auto card = healthyCard(5);
    card.thermalControllers = {controller(1, 61'000, -1)};
    put(card);
    amd.loader.replacements["ADL_Overdrive5_CurrentActivity_Get"] = nullptr;
    EXPECT_EQ(temperatureOf<ADLOD5DeviceStatistics>(amd.contexts).status, Status::Unavailable);
}

TEST(AdlOverdrive5Temperature, IsUnavailableWithoutTheLibrary) {
    AdlFixture amd;
    amd.loader.createStatus = -1;
    EXPECT_EQ(temperatureOf<ADLOD5DeviceStatistics>(amd.contexts).status, Status::Unavailable);
}

TEST(AdlUsage, IsUnavailableFromEveryGeneration) {
    AdlFixture amd;
    put(healthyCard(7));
    std::uint64_t percent = 77;
    EXPECT_EQ(ADLOD5DeviceStatistics(4, "", amd.contexts).getUsage(percent), Status::Unavailable);
    EXPECT_EQ(ADLOD6DeviceStatistics(4, "", amd.contexts).getUsage(percent), Status::Unavailable);
    EXPECT_EQ(ADLDNDeviceStatistics(4, "", amd.contexts).getUsage(percent), Status::Unavailable);
    EXPECT_EQ(percent, 77U);
    EXPECT_TRUE(amd.loader.events.empty()) << "nobody is asked";
}

TEST(AdlSource, HoldsNoReferenceToTheLibraryBetweenItsCalls) {
    AdlFixture amd;
    ADLDNDeviceStatistics source(4, "03:00.0", amd.contexts);
    std::int64_t celsius = 0;
    std::uint64_t bytes = 0;
    source.getTemperature(celsius);
    source.getFreeMemory(bytes);
    EXPECT_EQ(amd.contexts.get().use_count(), 2) << "that of the process, and the one just taken";
}

TEST(AdlMatch, IsTheWholeLocation) {
    AdlFixture amd;
    const ADLDNDeviceStatistics source(4, "03:00.0", amd.contexts);
    AdapterRecord adapter;
    for (const auto& [location, matches] : {std::pair{"03:00.0", true},
                                            {"03:00.1", false},
                                            {"03:00.00", false},
                                            {"03:00", false},
                                            {"", false}}) {
        adapter.location = location;
        EXPECT_EQ(source.matches(adapter), matches) << location;
    }
}

TEST(AdlMemory, IsTheTotalLessTheUsage) {
    AdlFixture amd;
    put(healthyCard(7));
    EXPECT_EQ(totalMemoryOf(amd.contexts).bytes, 8ULL << 30);
    EXPECT_EQ(totalMemoryOf(amd.contexts).status, Status::Ok);
    EXPECT_EQ(freeMemoryOf(amd.contexts).bytes, 7ULL << 30);
    EXPECT_EQ(freeMemoryOf(amd.contexts).status, Status::Ok);
}

TEST(AdlMemory, WrapsAUsageOf2048MegabytesIn32Bits) {
    AdlFixture amd;
    auto card = healthyCard(7);
    card.usedMegabytes = 2048;
    put(card);
    const auto answer = freeMemoryOf(amd.contexts);
    EXPECT_EQ(answer.status, Status::Ok);
    EXPECT_EQ(answer.bytes, (8ULL << 30) + (2ULL << 30));
}

TEST(AdlMemory, ShiftsTheUsageIn32BitsAndExtendsItsSign) {
    constexpr std::uint64_t total = 8ULL << 30;
    EXPECT_EQ(freeAdlMemory(total, 0), total);
    EXPECT_EQ(freeAdlMemory(total, 2047), total - (2047ULL << 20));
    EXPECT_EQ(freeAdlMemory(total, 3072), total + (1ULL << 30));
    EXPECT_EQ(freeAdlMemory(total, 4096), total) << "all bits are shifted out";
    EXPECT_EQ(freeAdlMemory(total, -1), total + (1ULL << 20));
    EXPECT_EQ(freeAdlMemory(0, 1), 0xFFFFFFFFFFF00000ULL) << "less than nothing wraps";
}

TEST(AdlMemory, GivesANegativeTotalAsItsBits) {
    AdlFixture amd;
    auto card = healthyCard(7);
    card.memoryBytes = -1;
    put(card);
    EXPECT_EQ(totalMemoryOf(amd.contexts).bytes, 0xFFFFFFFFFFFFFFFFULL);
}

TEST(AdlMemory, IsZeroInATotalThatTheCallDoesNotWrite) {
    AdlFixture amd;
    auto card = healthyCard(7);
    card.memoryBytes.reset();
    put(card);
    EXPECT_EQ(totalMemoryOf(amd.contexts).status, Status::Ok);
    EXPECT_EQ(totalMemoryOf(amd.contexts).bytes, 0U);
}

TEST(AdlMemory, CountsUsageThatTheCallDoesNotWriteAsZero) {
    AdlFixture amd;
    auto card = healthyCard(7);
    card.usedMegabytes.reset();
    put(card);
    EXPECT_EQ(freeMemoryOf(amd.contexts).bytes, 8ULL << 30);
}

TEST(AdlMemory, IsUnavailableOnAnyStatusButZero) {
    for (const char* function : {"ADL_Adapter_MemoryInfo_Get", "ADL2_Adapter_VRAMUsage_Get"}) {
        for (const std::int32_t status : {-1, 1}) {
            AdlFixture amd;
            auto card = healthyCard(7);
            card.statuses = {{function, status}};
            put(card);
            EXPECT_EQ(freeMemoryOf(amd.contexts).status, Status::Unavailable) << function;
            EXPECT_EQ(totalMemoryOf(amd.contexts).status == Status::Ok,
                      std::string(function) == "ADL2_Adapter_VRAMUsage_Get")
                << function;
        }
    }
}

TEST(AdlMemory, IsUnavailableWithoutItsFunctionsOrTheLibrary) {
    for (const char* function : {"ADL_Adapter_MemoryInfo_Get", "ADL2_Adapter_VRAMUsage_Get"}) {
        AdlFixture amd;
        put(healthyCard(7));
        amd.loader.replacements[function] = nullptr;
        EXPECT_EQ(freeMemoryOf(amd.contexts).status, Status::Unavailable) << function;
    }
    AdlFixture none;
    none.loader.createStatus = -1;
    EXPECT_EQ(totalMemoryOf(none.contexts).status, Status::Unavailable);
    EXPECT_EQ(freeMemoryOf(none.contexts).status, Status::Unavailable);
}

std::int32_t sentMegabytes = -1;

adl::Status lookAtVramUsage(adl::ContextHandle context, std::int32_t adapter, std::int32_t* megabytes) {
    sentContext = context;
    sentAdapter = adapter;
    sentMegabytes = *megabytes;
    return adl::error;
}

TEST(AdlMemory, AsksForTheUsageInTheDefaultContext) {
    AdlFixture amd;
    amd.loader.replacements["ADL2_Adapter_VRAMUsage_Get"] = addressOf(lookAtVramUsage);
    sentContext = &sentKind;
    EXPECT_EQ(freeMemoryOf(amd.contexts).status, Status::Unavailable);
    EXPECT_EQ(sentContext, nullptr);
    EXPECT_EQ(sentAdapter, 4);
    EXPECT_EQ(sentMegabytes, 0);
}

TEST(AdlMemory, AsksForTheUsageFirstAndForNoTotalWithoutIt) {
    static std::vector<std::string> calls;
    static adl::Status usageStatus;
    AdlFixture amd;
    amd.loader.replacements = {
        {"ADL2_Adapter_VRAMUsage_Get",
         addressOf(+[](adl::ContextHandle, std::int32_t, std::int32_t*) -> adl::Status {
             calls.emplace_back("usage");
             return usageStatus;
         })},
        {"ADL_Adapter_MemoryInfo_Get", addressOf(+[](std::int32_t, adl::MemoryInfo*) -> adl::Status {
             calls.emplace_back("total");
             return adl::ok;
         })}};
    calls.clear();
    usageStatus = adl::error;
    EXPECT_EQ(freeMemoryOf(amd.contexts).status, Status::Unavailable);
    EXPECT_EQ(calls, std::vector<std::string>{"usage"});
    usageStatus = adl::ok;
    EXPECT_EQ(freeMemoryOf(amd.contexts).status, Status::Ok);
    EXPECT_EQ(calls, (std::vector<std::string>{"usage", "usage", "total"}));
}

/// A class that overrides the slot, to see that the free memory is told from it.
class Larger final : public ADLDeviceStatistics {
public:
    using ADLDeviceStatistics::ADLDeviceStatistics;
    Status getTemperature(std::int64_t&) override { return Status::Unavailable; }
    Status getUsage(std::uint64_t&) override { return Status::Unavailable; }
    Status getTotalMemory(std::uint64_t& bytes) override {
        bytes = 100ULL << 30;
        return Status::Ok;
    }
};

TEST(AdlMemory, AsksItsOwnTotalThroughTheVirtualSlot) {
    AdlFixture amd;
    put(healthyCard(7));
    Larger source(4, "", amd.contexts);
    std::uint64_t bytes = 0;
    EXPECT_EQ(source.getFreeMemory(bytes), Status::Ok);
    EXPECT_EQ(bytes, 99ULL << 30);
}

} // namespace
} // namespace vexil::tests
