#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"
#include "module/video_card/statistics/intel/intel_device_statistics.h"
#include "platform/processor.h"
#include "platform/processor_cim.h"
#include "platform/shared_library.h"
#include "simulated/scenario/scenario.h"
#include "support/environment.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

// The module's own sources over the stand-in libraries, which are opened as the host opens them.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using Status = VideoCardStatisticsStatus;

/// A machine for the length of a test. The libraries stay loaded for the process; each asks for its scenario
/// by file, so every test has a file of its own.
class SimulatedSensors : public testing::Test {
protected:
    static void SetUpTestSuite() {
        for (const char* file : {VEXIL_KERNEL_GRAPHICS, VEXIL_PROCESSOR, VEXIL_DRIVER_SERVICE}) {
            ASSERT_NE(platform::openLibraryPath(file), nullptr) << file;
        }
    }

    void describe(const std::string& machine, const std::string& card = "") {
        static int count = 0;
        const auto file = testFolder() / ("vexil-sensors-" + std::to_string(++count) + ".json");
        std::ofstream(file) << R"({"schema": "vexil.scenario/1", )" << machine
                            << (machine.empty() ? "" : ", ")
                            << R"("cards": [{"vendorId": "8086", "deviceId": "3E92", "location": "00:02.0")"
                            << (card.empty() ? "" : ", ") << card << "}]}";
        setEnvironment("VEXIL_SCENARIO", file.string());
        const auto scenario = simulated::loadScenario(file.string());
        record_.vendorId = "8086";
        record_.location = scenario.cards.at(0).location;
        record_.devicePaths = {scenario.cards.at(0).devicePath()};
    }

    StatisticsSources usageSources() {
        StatisticsSources sources;
        D3DKMTDeviceStatisticsScanner({record_}).scan(sources);
        return sources;
    }

    Status temperature() {
        StatisticsSources sources;
        IntelDeviceStatisticsScanner().scan(sources);
        return sources.at(0)->getTemperature(celsius_);
    }

    AdapterRecord record_;
    std::int64_t celsius_ = 1;
    std::uint64_t percent_ = 1000;
};

TEST_F(SimulatedSensors, ShowTheLoadOfTheBusiestEngine) {
    describe("", R"("kernelGraphics": {"engines": [{"loadPercent": 12.2}, {"loadPercent": 36.5}]})");
    const auto sources = usageSources();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_EQ(sources[0]->getUsage(percent_), Status::Ok);
    EXPECT_NEAR(static_cast<double>(percent_), 37.0, 1.0);
}

TEST_F(SimulatedSensors, ShowAnIdleCardWhereTheScenarioSaysNothing) {
    describe("");
    const auto sources = usageSources();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_EQ(sources[0]->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 0U);
}

TEST_F(SimulatedSensors, HaveNoUsageForAPathThatDoesNotOpen) {
    describe("", R"("kernelGraphics": {"openStatus": "0xC0000001"})");
    EXPECT_TRUE(usageSources().empty());
}

TEST_F(SimulatedSensors, HaveNoUsageWithoutACountOfEngines) {
    describe("", R"("kernelGraphics": {"statisticsStatus": "0xC0000001", "engines": [{"loadPercent": 50}]})");
    const auto sources = usageSources();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_EQ(sources[0]->getUsage(percent_), Status::Unavailable);
    EXPECT_EQ(percent_, 1000U);
}

TEST_F(SimulatedSensors, HaveNoUsageWithoutEngines) {
    describe("", R"("kernelGraphics": {"engines": []})");
    EXPECT_EQ(usageSources().at(0)->getUsage(percent_), Status::Unavailable);
}

TEST_F(SimulatedSensors, ShowNoLoadForAnEngineThatCannotBeAsked) {
    describe("", R"("kernelGraphics": {"engines": [{"loadPercent": 90, "status": "0xC0000001"}]})");
    EXPECT_EQ(usageSources().at(0)->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 0U);
}

TEST_F(SimulatedSensors, ShowTheLastLoadOverTheNewWindowWhereAnEngineFailsLater) {
    describe("", R"("kernelGraphics": {"engines": [{"loadPercent": 50, "failsFrom": 3}]})");
    const auto source = std::move(usageSources().at(0));
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_GE(percent_, 40U) << "two queries, which succeed";
    std::this_thread::sleep_for(std::chrono::seconds(1));
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_GE(percent_, 1U);
    EXPECT_LE(percent_, 25U) << "half of a tenth of a second, over a whole one";
}

TEST_F(SimulatedSensors, CountTheQueriesOfEachEngineAndScenarioAlone) {
    const std::string card = R"("kernelGraphics": {"engines": [{"loadPercent": 90, "failsFrom": 3},
                                                               {"loadPercent": 50, "failsFrom": 3}]})";
    for (int machine = 0; machine < 2; ++machine) {
        describe("", card);
        EXPECT_EQ(usageSources().at(0)->getUsage(percent_), Status::Ok);
        EXPECT_GE(percent_, 80U);
    }
}

TEST_F(SimulatedSensors, ShowAHundredForARunningTimeThatGoesBackwards) {
    describe("", R"("kernelGraphics": {"engines": [{"runningTimes": [5000000, 0]}]})");
    EXPECT_EQ(usageSources().at(0)->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 100U);
}

TEST_F(SimulatedSensors, ShowAHundredForARunningTimeThatLeaps) {
    describe("", R"("kernelGraphics": {"engines": [{"runningTimes": [0, "0x7FFFFFFFFFFFFFFF"]}]})");
    const auto source = std::move(usageSources().at(0));
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 100U);
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 0U) << "the last one stays";
}

TEST_F(SimulatedSensors, SurviveACountOfEnginesThatIsNonsense) {
    describe("", R"("kernelGraphics": {"engineCount": 100, "engines": [{"loadPercent": 90}]})");
    EXPECT_EQ(usageSources().at(0)->getUsage(percent_), Status::Ok);
    EXPECT_GE(percent_, 85U);
    describe("", R"("kernelGraphics": {"engineCount": "0xFFFFFFFF"})");
    EXPECT_TRUE(usageSources().empty());
}

TEST_F(SimulatedSensors, ShowTheTemperatureOfTheProcessorOfTheScenario) {
    describe(R"("driverService": {"temperatureCelsius": 61})");
    EXPECT_EQ(temperature(), Status::Ok);
    EXPECT_EQ(celsius_, 61);
    describe(R"("processor": {"vendor": "AuthenticAMD", "family": 25, "model": 33, "stepping": 0},
                "driverService": {"temperatureCelsius": -17.5})");
    EXPECT_EQ(temperature(), Status::Ok);
    EXPECT_EQ(celsius_, -17);
}

TEST_F(SimulatedSensors, ReadEachFamilyOfAmd) {
    for (const char* model :
         {R"("family": 21, "model": 2)", R"("family": 21, "model": 48)", R"("family": 21, "model": 101)",
          R"("family": 22, "model": 0)", R"("family": 23, "model": 113)"}) {
        describe(R"("processor": {"vendor": "AuthenticAMD", )" + std::string(model) +
                 R"(}, "driverService": {"temperatureCelsius": 48})");
        EXPECT_EQ(temperature(), Status::Ok) << model;
        EXPECT_EQ(celsius_, 48) << model;
    }
}

TEST_F(SimulatedSensors, CaptionTheProcessorAsTheSystemWould) {
    describe(R"("processor": {"vendor": "AuthenticAMD", "family": 25, "model": 33, "stepping": 2})");
    const char* property = "Caption";
    system::CimRows rows = nullptr;
    const auto cim = platform::makeProcessorCim();
    ASSERT_EQ(cim->query(&property, "Win32_Processor", 1, rows, system::machineNamespace),
              system::CimStatus::Success);
    ASSERT_TRUE(rows != nullptr && rows->size() == 1);
    EXPECT_STREQ(rows->front()->front(), "AMD64 Family 25 Model 33 Stepping 2");
    cim->freeRows(&rows);
}

TEST_F(SimulatedSensors, FailToCaptionTheProcessorAsTheScenarioSays) {
    const char* property = "Caption";
    system::CimRows rows = nullptr;
    const auto ask = [&] {
        return platform::makeProcessorCim()->query(&property, "Win32_Processor", 1, rows,
                                                   system::machineNamespace);
    };
    describe(R"("processor": {"vendor": "AuthenticAMD", "captionStatus": 21})");
    EXPECT_EQ(ask(), system::CimStatus::QueryFailed);
    EXPECT_EQ(rows, nullptr);
    describe(R"("processor": {"vendor": "AuthenticAMD", "listed": false})");
    EXPECT_EQ(ask(), system::CimStatus::Success);
    EXPECT_EQ(rows, nullptr);
}

TEST_F(SimulatedSensors, ReadTheProcessorThatItsCaptionNames) {
    describe(R"("processor": {"vendor": "AuthenticAMD", "family": 26, "caption": "Model 1 Family 22 of AMD"},
                "driverService": {"temperatureCelsius": 48})");
    EXPECT_EQ(temperature(), Status::Ok);
    EXPECT_EQ(celsius_, 48);
}

TEST_F(SimulatedSensors, EndTheScanWhereTheCaptionTellsNoFamilyOrModel) {
    for (const char* processor : {R"("caption": "AMD64 Family 25 Stepping 0")", R"("captionStatus": 21)",
                                  R"("captionStatus": "0x80041003")", R"("listed": false)"}) {
        describe(R"("processor": {"vendor": "AuthenticAMD", "family": 25, )" + std::string(processor) + "}");
        try {
            temperature();
            FAIL() << processor;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(
                error.what(),
                "Failed to create a TemperatureAmd because it was unable to obtain family or model.");
        }
    }
    describe(R"("processor": {"vendor": "AuthenticAMD", "family": 25, "caption": "Model 33 Family"})");
    EXPECT_THROW(temperature(), std::out_of_range);
}

TEST_F(SimulatedSensors, HaveNoTemperatureWithoutADriverOrItsService) {
    for (const char* service :
         {R"("ready": false)", R"("created": false)", R"("msrs": [{"register": "0x19C", "status": 1}])",
          R"("msrs": [{"register": "0x19C", "value": "0x002D0000"}])"}) {
        describe(R"("driverService": {)" + std::string(service) + "}");
        EXPECT_EQ(temperature(), Status::Unavailable) << service;
        EXPECT_EQ(celsius_, -999999);
    }
}

TEST_F(SimulatedSensors, EndTheScanForAProcessorThatIsNotKnown) {
    describe(R"("processor": {"vendor": "HygonGenuine"})");
    EXPECT_THROW(temperature(), std::runtime_error);
    describe(R"("processor": {"vendor": "AuthenticAMD", "family": 26, "model": 2})");
    try {
        temperature();
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "The AMD Family 26 and Model 2 is not supported. Throwing exception...");
    }
}

TEST_F(SimulatedSensors, SayWhatIsWrongWithAScenario) {
    for (const char* machine :
         {R"("processor": {"vendor": "Intel"})", R"("processor": {"familly": 6})",
          R"("driverService": {"temperatureCelsius": 1000})", R"("driverService": {"msrs": [{}]})"}) {
        EXPECT_THROW(describe(machine), simulated::ScenarioError) << machine;
    }
    EXPECT_THROW(describe("", R"("kernelGraphics": {"engines": [{"loadPercent": -1}]})"),
                 simulated::ScenarioError);
}

} // namespace
} // namespace vexil::tests
