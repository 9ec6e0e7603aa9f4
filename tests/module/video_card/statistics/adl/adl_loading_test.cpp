#include "core/sal.h"
#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/adl/adl_scanner.h"
#include "platform/shared_library.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace vexil::tests {
namespace {

using namespace module::video_card;

// Each test puts its scenario in place as a host does, and its context ends with it.
class AdlLoading : public testing::Test {
protected:
    void SetUp() override {
        library_ = platform::openLibraryPath(VEXIL_STAND_IN);
        ASSERT_NE(library_, nullptr);
    }
    void TearDown() override { platform::closeLibrary(library_); }

    void putScenario(const std::string& file) {
        variable_ = "VEXIL_SCENARIO=" + file;
        putenv(variable_.data());
    }
    /// A scenario of one AMD card at 0a:00.0 and a section "adl" for the library.
    void writeScenario(const std::string& card, const std::string& library) {
        const auto file = testFolder() / "scenario.json";
        std::ofstream(file) << R"({"schema": "vexil.scenario/1", "adl": )" << library
                            << R"(, "cards": [{"vendorId": "1002", "deviceId": "73DF",
                                  "location": "0a:00.0", "adl": )"
                            << card << "}]}";
        putScenario(file.string());
    }
    StatisticsSources scan() {
        StatisticsSources sources;
        ADLDeviceStatisticsScanner(contexts_).scan(sources);
        return sources;
    }

    std::string variable_;
    void* library_ = nullptr;
    ADLContexts contexts_{*get_module()};
};

constexpr const char* healthy = R"({"overdriveSupported": 1, "overdriveVersion": 7, "millidegrees": 48500,
                                    "memoryBytes": "0x200000000", "usedMegabytes": 512})";

TEST_F(AdlLoading, FindsTheCardOfTheHealthyMachineThroughTheVendorsName) {
    putScenario(VEXIL_HEALTHY_SCENARIO);
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 1U);
    AdapterRecord adapter;
    adapter.location = "0a:00.0";
    EXPECT_TRUE(sources[0]->matches(adapter));
    std::int64_t celsius = 0;
    std::uint64_t bytes = 0;
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius, 51);
    EXPECT_EQ(sources[0]->getTotalMemory(bytes), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(bytes, 12ULL << 30);
    EXPECT_EQ(sources[0]->getFreeMemory(bytes), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(bytes, 11ULL << 30);
}

TEST_F(AdlLoading, LacksEachFunctionThatTheScenarioTakesAway) {
    struct Missing {
        const char* name;
        bool source, temperature, memory;
    };
    for (const auto& [name, source, temperature, memory] :
         {Missing{"ADL_Main_Control_Create", false, false, false},
          {"ADL_Main_Control_Destroy", false, false, false},
          {"ADL_Adapter_NumberOfAdapters_Get", false, false, false},
          {"ADL_Adapter_AdapterInfo_Get", false, false, false},
          {"ADL_Adapter_Active_Get", false, false, false},
          {"ADL2_Overdrive_Caps", false, false, false},
          {"ADL_Overdrive5_ThermalDevices_Enum", true, true, true},
          {"ADL_Overdrive5_Temperature_Get", true, true, true},
          {"ADL_Overdrive5_CurrentActivity_Get", true, true, true},
          {"ADL_Overdrive6_Temperature_Get", true, true, true},
          {"ADL_Overdrive6_CurrentStatus_Get", true, true, true},
          {"ADL2_OverdriveN_Temperature_Get", true, false, true},
          {"ADL2_OverdriveN_PerformanceStatus_Get", true, false, true},
          {"ADL_Adapter_MemoryInfo_Get", true, true, false},
          {"ADL2_Adapter_VRAMUsage_Get", true, true, false}}) {
        // The loader reads a scenario once, so each has a file of its own.
        const auto file = testFolder() / (std::string(name) + ".json");
        std::ofstream(file) << R"({"schema": "vexil.scenario/1", "adl": {"missingFunctions": [")" << name
                            << R"("]}, "cards": [{"vendorId": "1002", "deviceId": "73DF",
                                 "location": "0a:00.0", "adl": )"
                            << healthy << "}]}";
        putScenario(file.string());
        ADLContexts contexts(*get_module());
        StatisticsSources sources;
        ADLDeviceStatisticsScanner(contexts).scan(sources);
        ASSERT_EQ(sources.size(), source ? 1U : 0U) << name;
        if (source) {
            std::int64_t celsius = 0;
            std::uint64_t bytes = 0;
            EXPECT_EQ(sources[0]->getTemperature(celsius) == VideoCardStatisticsStatus::Ok, temperature)
                << name;
            EXPECT_EQ(sources[0]->getFreeMemory(bytes) == VideoCardStatisticsStatus::Ok, memory) << name;
        }
    }
}

TEST_F(AdlLoading, FindsNothingIfTheLibraryOfTheScenarioDoesNotStart) {
    writeScenario(healthy, R"({"statuses": {"ADL_Main_Control_Create": -1}})");
    EXPECT_TRUE(scan().empty());
}

// Before the test that makes the context of the process, which stays.
TEST_F(AdlLoading, OfTheProcessGoesThroughTheSuitesLoader) {
    writeScenario(healthy, R"({"missingFunctions": ["ADL2_Overdrive_Caps"]})");
    EXPECT_EQ(getADLContext(), nullptr) << "only the suite's loader hides what the scenario's library lacks";
}

TEST_F(AdlLoading, KeepsTheContextOfTheProcessInOnePlace) {
    writeScenario(healthy, "{}");
    const auto context = getADLContext();
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(systemAdl().get(), context);
    StatisticsSources sources;
    ADLDeviceStatisticsScanner().scan(sources);
    EXPECT_EQ(sources.size(), 1U);
}

} // namespace
} // namespace vexil::tests
