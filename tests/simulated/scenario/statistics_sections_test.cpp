#include "simulated/scenario/scenario.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>

namespace vexil::simulated {
namespace {

/// A scenario of one card at 0a:1f.2 with these fields more, and these of the whole.
Scenario load(const std::string& cardFields, const std::string& fields = "") {
    const auto file = tests::testFolder() / "statistics.json";
    std::ofstream(file)
        << R"({"schema": "vexil.scenario/1", "cards": [{"vendorId": "10DE", "deviceId": "2503",
                               "location": "0a:1f.2")"
        << (cardFields.empty() ? "" : ", ") << cardFields << "}]" << (fields.empty() ? "" : ", ") << fields
        << "}";
    return loadScenario(file.string());
}

/// What is wrong with it, without the file's name; empty if nothing is.
std::string errorOf(const std::string& cardFields, const std::string& fields = "") {
    try {
        static_cast<void>(load(cardFields, fields));
        return {};
    } catch (const ScenarioError& error) {
        const std::string text = error.what();
        return text.substr(text.find(".json: ") + 7);
    }
}

TEST(NvapiSectionOfACard, IsAbsentUnlessItIsWritten) {
    EXPECT_FALSE(load("").cards.at(0).nvapi);
    EXPECT_TRUE(load(R"("nvapi": {})").cards.at(0).nvapi);
}

TEST(NvapiSectionOfACard, TakesBusAndSlotFromTheLocation) {
    const auto scenario = load(R"("nvapi": {})");
    const auto& gpu = *scenario.cards.at(0).nvapi;
    EXPECT_EQ(gpu.bus, 10U);
    EXPECT_EQ(gpu.slot, 31U);
    EXPECT_TRUE(gpu.celsius.empty());
    EXPECT_FALSE(gpu.sensorCount || gpu.usagePercent || gpu.totalKib || gpu.freeKib);
    EXPECT_TRUE(gpu.statuses.empty());
}

TEST(NvapiSectionOfACard, HoldsEveryValueAndStatus) {
    const auto scenario =
        load(R"("nvapi": {"bus": 300, "slot": 1, "sensors": [{"celsius": -5}, {"celsius": 90}],
        "sensorCount": "0xFFFFFFFF", "usagePercent": 101, "totalMemoryKib": 1, "freeMemoryKib": 2,
        "statuses": {"NvAPI_GPU_GetBusId": -1, "NvAPI_GPU_GetBusSlotId": -2, "NvAPI_GPU_GetThermalSettings": -3,
                     "NvAPI_GPU_GetMemoryInfo": -4, "usage": 5}})");
    const auto& gpu = *scenario.cards.at(0).nvapi;
    EXPECT_EQ(gpu.bus, 300U);
    EXPECT_EQ(gpu.slot, 1U);
    EXPECT_EQ(gpu.celsius, (std::vector<std::int32_t>{-5, 90}));
    EXPECT_EQ(gpu.sensorCount, 0xFFFFFFFFU);
    EXPECT_EQ(gpu.usagePercent, 101U);
    EXPECT_EQ(gpu.totalKib, 1U);
    EXPECT_EQ(gpu.freeKib, 2U);
    EXPECT_EQ(gpu.statuses, (FunctionStatuses{{"NvAPI_GPU_GetBusId", -1},
                                              {"NvAPI_GPU_GetBusSlotId", -2},
                                              {"NvAPI_GPU_GetThermalSettings", -3},
                                              {"NvAPI_GPU_GetMemoryInfo", -4},
                                              {"usage", 5}}));
}

TEST(NvapiSectionOfACard, NamesTheFieldOfAnError) {
    EXPECT_EQ(errorOf(R"("nvapi": {"sensors": [{}, {}, {}, {}]})"),
              "cards[0].nvapi.sensors: NVAPI's record has room for three");
    EXPECT_TRUE(errorOf(R"("nvapi": {"sensors": [{"celcius": 1}]})")
                    .starts_with("cards[0].nvapi.sensors[0].celcius: "));
    EXPECT_TRUE(errorOf(R"("nvapi": {"usage": 1})").starts_with("cards[0].nvapi.usage: is not a field"));
    EXPECT_TRUE(errorOf(R"("nvapi": {"statuses": {"NvAPI_Initialize": 1}})")
                    .starts_with("cards[0].nvapi.statuses.NvAPI_Initialize: is not a field"));
    EXPECT_TRUE(
        errorOf(R"("nvapi": {"usagePercent": -1})").starts_with("cards[0].nvapi.usagePercent: must be"));
}

TEST(NvapiSectionOfAMachine, HoldsCountStatusesAndMissingFunctions) {
    const auto scenario = load("", R"("nvapi": {"gpuCount": 65, "missingFunctions": ["usage", "NvAPI_Unload"],
        "statuses": {"NvAPI_Initialize": -6, "NvAPI_Unload": -1, "NvAPI_EnumPhysicalGPUs": 1}})");
    EXPECT_EQ(scenario.nvapi.gpuCount, 65U);
    EXPECT_EQ(scenario.nvapi.missingFunctions, (std::vector<std::string>{"usage", "NvAPI_Unload"}));
    EXPECT_EQ(scenario.nvapi.statuses.at("NvAPI_Initialize"), -6);
    EXPECT_EQ(errorOf("", R"("nvapi": {"missingFunctions": ["NvAPI_Unlaod"]})"),
              "nvapi.missingFunctions: \"NvAPI_Unlaod\" is no function of this library");
    EXPECT_TRUE(
        errorOf("", R"("nvapi": {"missingFunctions": [1]})").starts_with("nvapi.missingFunctions: must be"));
}

TEST(MissingExports, AreThoseThatALibraryCannotHide) {
    EXPECT_TRUE(missingExports(load("")).empty());
    EXPECT_EQ(missingExports(load("", R"("kernelGraphics": {"missingFunction": "D3DKMTCloseAdapter"},
                  "driverService": {"missingFunction": "CreateVXKService"},
                  "nvapi": {"missingFunctions": ["usage", "nvapi_QueryInterface"]},
                  "adl": {"missingFunctions": ["ADL_Adapter_Active_Get"]})")),
              (std::vector<std::string>{"D3DKMTCloseAdapter", "CreateVXKService", "nvapi_QueryInterface"}));
    EXPECT_EQ(errorOf("", R"("kernelGraphics": {"missingFunction": "D3DKMTEscape"})"),
              "kernelGraphics.missingFunction: \"D3DKMTEscape\" is none of D3DKMTOpenAdapterFromDeviceName, "
              "D3DKMTQueryStatistics, D3DKMTCloseAdapter");
    EXPECT_EQ(errorOf("", R"("driverService": {"missingFunction": "Create"})"),
              "driverService.missingFunction: \"Create\" is none of CreateVXKService, DestroyVXKService");
    EXPECT_TRUE(errorOf("", R"("kernelGraphics": {"engines": []})")
                    .starts_with("kernelGraphics.engines: is not a field"));
}

TEST(EngineOfACard, IsIdleAndAnswersEveryQueryByDefault) {
    const auto engine = load("").cards.at(0).kernelGraphics.engines.at(0);
    EXPECT_EQ(engine.loadPercent, 0);
    EXPECT_EQ(engine.status, 0);
    EXPECT_EQ(engine.failsFrom, 1U);
    EXPECT_TRUE(engine.runningTimes.empty());
}

TEST(EngineOfACard, HoldsWhenItFailsAndItsRunningTimes) {
    const auto scenario = load(R"("kernelGraphics": {"engines": [{"loadPercent": 50, "failsFrom": 3},
        {"status": 5, "failsFrom": 2}, {"runningTimes": [5, "0xFFFFFFFFFFFFFFFF", 0]}]})");
    const auto& engines = scenario.cards.at(0).kernelGraphics.engines;
    EXPECT_EQ(engines.at(0).failsFrom, 3U);
    EXPECT_EQ(engines.at(0).status, static_cast<std::int32_t>(0xC0000001)) << "unsuccessful";
    EXPECT_EQ(engines.at(1).status, 5);
    EXPECT_EQ(engines.at(2).runningTimes,
              (std::vector<std::uint64_t>{5, std::numeric_limits<std::uint64_t>::max(), 0}));
}

TEST(EngineOfACard, NamesTheFieldOfAnError) {
    const auto error = [](const std::string& engine) {
        return errorOf(R"("kernelGraphics": {"engines": [{)" + engine + "}]}");
    };
    const std::string engine = "cards[0].kernelGraphics.engines[0].";
    EXPECT_TRUE(error(R"("failsFrom": 0)").starts_with(engine + "failsFrom: must be a whole number from 1"));
    EXPECT_EQ(error(R"("failsFrom": 2, "status": 0)"),
              engine + R"(status: must not be 0 beside "failsFrom")");
    EXPECT_EQ(error(R"("runningTimes": 5)"), engine + "runningTimes: must be a list of numbers, is 5");
    EXPECT_TRUE(error(R"("runningTimes": [5, -1])").starts_with(engine + "runningTimes: must be a whole"));
    EXPECT_EQ(error(R"("runningTimes": [5], "loadPercent": 1)"),
              engine + R"(runningTimes: stands instead of "loadPercent", not beside it)");
}

TEST(ProcessorSectionOfAMachine, IsListedWithAUsualCaptionByDefault) {
    const auto processor = load("").processor;
    EXPECT_TRUE(processor.caption.empty());
    EXPECT_EQ(processor.captionStatus, 0);
    EXPECT_TRUE(processor.listed);
}

TEST(ProcessorSectionOfAMachine, HoldsItsCaptionAndHowAskingForItEnds) {
    const auto processor =
        load("", R"("processor": {"caption": "AMD64 Family", "captionStatus": 21, "listed": false})")
            .processor;
    EXPECT_EQ(processor.caption, "AMD64 Family");
    EXPECT_EQ(processor.captionStatus, 21);
    EXPECT_FALSE(processor.listed);
    const std::string longest(255, 'x');
    EXPECT_EQ(load("", R"("processor": {"caption": ")" + longest + "\"}").processor.caption, longest);
}

TEST(ProcessorSectionOfAMachine, NamesTheFieldOfAnError) {
    EXPECT_EQ(errorOf("", R"("processor": {"caption": ""})"),
              R"(processor.caption: must have 1 to 255 characters, is "")");
    EXPECT_TRUE(errorOf("", R"("processor": {"caption": ")" + std::string(256, 'x') + "\"}")
                    .starts_with("processor.caption: must have 1 to 255 characters"));
    EXPECT_EQ(errorOf("", R"("processor": {"listed": 0})"), "processor.listed: must be true or false, is 0");
    EXPECT_TRUE(errorOf("", R"("processor": {"captionStatus": "bad"})")
                    .starts_with("processor.captionStatus: must be a whole number"));
}

TEST(AdlSectionOfACard, IsAbsentUnlessItIsWritten) {
    EXPECT_FALSE(load("").cards.at(0).adl);
    EXPECT_TRUE(load(R"("adl": {})").cards.at(0).adl);
}

TEST(AdlSectionOfACard, HasOneActiveAdapterAtItsLocationByDefault) {
    const auto scenario = load(R"("adl": {})");
    const auto& card = *scenario.cards.at(0).adl;
    ASSERT_EQ(card.adapters.size(), 1U);
    EXPECT_EQ(card.adapters[0].index, 0);
    EXPECT_EQ(card.adapters[0].bus, 10);
    EXPECT_EQ(card.adapters[0].device, 31);
    EXPECT_EQ(card.adapters[0].function, 2);
    EXPECT_EQ(card.adapters[0].active, 1);
    EXPECT_EQ(card.adapters[0].activeStatus, 0);
    EXPECT_FALSE(card.overdriveSupported || card.overdriveVersion || card.millidegrees || card.memoryBytes ||
                 card.usedMegabytes);
}

TEST(AdlSectionOfACard, NumbersAdaptersOverAllCardsUnlessTheySayTheirs) {
    const auto scenario = load(R"("adl": {"adapters": [{}, {"index": 9}, {"function": 3}]}},
        {"vendorId": "1002", "deviceId": "73DF", "location": "0b:00.0", "adl": {})");
    const auto& first = scenario.cards.at(0).adl->adapters;
    ASSERT_EQ(first.size(), 3U);
    EXPECT_EQ(first[0].index, 0);
    EXPECT_EQ(first[1].index, 9);
    EXPECT_EQ(first[2].index, 1);
    EXPECT_EQ(first[2].function, 3);
    EXPECT_EQ(first[2].bus, 10);
    EXPECT_EQ(scenario.cards.at(1).adl->adapters.at(0).index, 2);
}

TEST(AdlSectionOfACard, HoldsEveryValueAndStatus) {
    const auto scenario = load(R"("adl": {"adapters": [{"bus": -1, "device": 32, "function": 8, "active": 2,
        "activeStatus": -9}], "overdriveSupported": 0, "overdriveVersion": -7, "millidegrees": -50999,
        "thermalControllers": [{}, {"domain": 1, "enumStatus": 2, "millidegrees": 3, "temperatureStatus": -4}],
        "memoryBytes": -9223372036854775808, "usedMegabytes": 2048, "statuses": {"ADL2_Overdrive_Caps": -1}})");
    const auto& card = *scenario.cards.at(0).adl;
    EXPECT_EQ(card.adapters.at(0).bus, -1);
    EXPECT_EQ(card.adapters.at(0).device, 32);
    EXPECT_EQ(card.adapters.at(0).active, 2);
    EXPECT_EQ(card.adapters.at(0).activeStatus, -9);
    EXPECT_EQ(card.overdriveSupported, 0);
    EXPECT_EQ(card.overdriveVersion, -7);
    EXPECT_EQ(card.millidegrees, -50'999);
    ASSERT_EQ(card.thermalControllers.size(), 2U);
    EXPECT_FALSE(card.thermalControllers[0].domain || card.thermalControllers[0].millidegrees);
    EXPECT_EQ(card.thermalControllers[1].domain, 1);
    EXPECT_EQ(card.thermalControllers[1].enumStatus, 2);
    EXPECT_EQ(card.thermalControllers[1].millidegrees, 3);
    EXPECT_EQ(card.thermalControllers[1].temperatureStatus, -4);
    EXPECT_EQ(card.memoryBytes, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(card.usedMegabytes, 2048);
    EXPECT_EQ(card.statuses, (FunctionStatuses{{"ADL2_Overdrive_Caps", -1}}));
}

TEST(AdlSectionOfACard, NamesTheFieldOfAnError) {
    EXPECT_TRUE(errorOf(R"("adl": {"adapters": [{"bus": "3"}]})")
                    .starts_with("cards[0].adl.adapters[0].bus: must be"));
    EXPECT_TRUE(
        errorOf(R"("adl": {"millidegrees": 2147483648})").starts_with("cards[0].adl.millidegrees: must be"));
    EXPECT_TRUE(
        errorOf(R"("adl": {"millidegrees": -2147483649})").starts_with("cards[0].adl.millidegrees: must be"));
    EXPECT_TRUE(
        errorOf(R"("adl": {"temperature": 1})").starts_with("cards[0].adl.temperature: is not a field"));
}

TEST(AdlSectionOfAMachine, HoldsCountStatusesAndMissingFunctions) {
    const auto scenario =
        load("", R"("adl": {"adapterCount": -3, "missingFunctions": ["ADL_Adapter_Active_Get"],
        "statuses": {"ADL_Main_Control_Create": -1}})");
    EXPECT_EQ(scenario.adl.adapterCount, -3);
    EXPECT_EQ(scenario.adl.missingFunctions, std::vector<std::string>{"ADL_Adapter_Active_Get"});
    EXPECT_EQ(scenario.adl.statuses.at("ADL_Main_Control_Create"), -1);
    EXPECT_EQ(errorOf("", R"("adl": {"missingFunctions": ["ADL_Adapter"]})"),
              "adl.missingFunctions: \"ADL_Adapter\" is no function of this library");
}

} // namespace
} // namespace vexil::simulated
