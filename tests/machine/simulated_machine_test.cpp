#include "host/subprocess.h"
#include "support/environment.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>

namespace vexil::host::tests {
namespace {

using Json = nlohmann::json;

Json jsonOf(const std::vector<std::string>& arguments) {
    const auto end = runProgram(arguments);
    EXPECT_EQ(end.code, 0) << end.err;
    return Json::parse(end.out);
}

/// The report of a run on a simulated machine, with the program's exit code in it.
Json reportOf(const std::string& scenario, const std::vector<std::string>& options) {
    const auto file = vexil::tests::testFolder() / ("report_" + scenario + ".json");
    std::vector<std::string> arguments = {"--machine", "simulated:" + scenario, "run", "--report",
                                          file.string()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto end = runProgram(arguments);
    std::ifstream stream(file);
    if (!stream) {
        throw std::runtime_error("no report; exit code " + std::to_string(end.code) + ": " + end.out +
                                 end.err);
    }
    auto report = Json::parse(stream);
    stream.close();
    EXPECT_EQ(report["exitCode"], end.code) << end.out << end.err;
    std::filesystem::remove(file);
    return report;
}

struct BrokenCard {
    const char* scenario;
    int result;
    std::vector<std::string> messages;
    int lastProgress;
    int exitCode;
    const char* tests = "1";
    int kind = 0; ///< of the messages
};

class BrokenCards : public testing::TestWithParam<BrokenCard> {};

TEST_P(BrokenCards, GetTheResultAndTheMessagesOfTheirFault) {
    const auto& expected = GetParam();
    const auto report = reportOf(expected.scenario, {"--tests", expected.tests});
    ASSERT_EQ(report["runs"].size(), 1U);
    const auto& run = report["runs"][0];
    EXPECT_EQ(run["result"], expected.result);
    std::vector<std::string> messages;
    for (const auto& message : run["messages"]) {
        EXPECT_EQ(message["kind"], expected.kind);
        messages.push_back(message["key"]);
    }
    EXPECT_EQ(messages, expected.messages);
    const auto progress = run["progress"].get<std::vector<int>>();
    EXPECT_EQ(progress.empty() ? 0 : progress.back(), expected.lastProgress);
    EXPECT_EQ(report["exitCode"], expected.exitCode);
}

INSTANTIATE_TEST_SUITE_P(
    OfDirect3D, BrokenCards,
    testing::Values(BrokenCard{"byte_flip", 3, {}, 32, 1},
                    BrokenCard{"small_memory", 1, {"TOTAL_SURFACES_TESTED: 4/4"}, 100, 0},
                    BrokenCard{"no_memory", 5, {"A_VIDEO_CARD_COULD_NOT_ALLOCATE_MEMORY"}, 100, 3},
                    BrokenCard{"removed_device", 5, {"TEST_COULD_NOT_BE_COMPLETED"}, 100, 3},
                    BrokenCard{"failing_map", 5, {"A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"}, 100, 3},
                    BrokenCard{"no_resolve", 5, {"A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"}, 100, 3}),
    [](const auto& broken) { return std::string(broken.param.scenario); });

INSTANTIATE_TEST_SUITE_P(
    OfArithmeticAndPictures, BrokenCards,
    testing::Values(
        BrokenCard{"wrong_float", 3, {"MATH_OP_TEST_FAIL_MESSAGE"}, 100, 1, "17"},
        BrokenCard{"wrong_float", 3, {"MATH_OP_TEST_FAIL_MESSAGE"}, 100, 1, "18"},
        BrokenCard{"wrong_double", 3, {"MATH_OP_TEST_FAIL_MESSAGE"}, 100, 1, "17"},
        BrokenCard{"wrong_double", 3, {"MATH_OP_TEST_FAIL_MESSAGE"}, 100, 1, "18"},
        BrokenCard{"no_doubles", 1, {}, 0, 0, "17"}, BrokenCard{"no_doubles", 1, {}, 0, 0, "18"},
        BrokenCard{"idle_dot_products", 1, {}, 0, 0, "17"},
        BrokenCard{"idle_dot_products", 3, {"MATH_OP_TEST_FAIL_MESSAGE"}, 100, 1, "18"},
        BrokenCard{"no_compute_buffers", 5, {"A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"}, 100, 3, "17", 1},
        BrokenCard{"wrong_pixel", 3, {"INCONSISTENCY_FOUND_WHILE_COMPARING_IMAGES"}, 100, 1, "3"},
        BrokenCard{"wide_rows", 3, {"INCONSISTENCY_FOUND_WHILE_COMPARING_IMAGES"}, 100, 1, "3"}),
    [](const auto& broken) { return std::string(broken.param.scenario) + "_" + broken.param.tests; });

TEST(SimulatedMachine, PassesTheArithmeticAndTheTexturePipeline) {
    const auto report = reportOf("healthy", {"--card", "0100", "--tests", "3,17,18"});
    ASSERT_EQ(report["runs"].size(), 3U);
    for (const auto& run : report["runs"]) {
        EXPECT_EQ(run["result"], 1) << run;
        EXPECT_TRUE(run["messages"].empty()) << run;
    }
    EXPECT_EQ(report["runs"][0]["progress"].back(), 99);
    EXPECT_EQ(report["exitCode"], 0);
}

TEST(SimulatedMachine, HasOneHealthyCardOfEachVendorAndPassesTheVideoMemoryTest) {
    const auto report = reportOf("healthy", {"--tests", "1"});
    EXPECT_EQ(report["machine"], "simulated");
    ASSERT_EQ(report["runs"].size(), 3U);
    for (const auto& run : report["runs"]) {
        EXPECT_EQ(run["result"], 1);
        EXPECT_EQ(run["outcome"], "Passed");
        ASSERT_EQ(run["messages"].size(), 1U);
        EXPECT_EQ(run["messages"][0]["key"], "TOTAL_SURFACES_TESTED: 50/50");
        EXPECT_NE(run["messages"][0]["text"], "TOTAL_SURFACES_TESTED: 50/50") << "the host translates it";
        std::vector<int> progress = run["progress"];
        ASSERT_EQ(progress.size(), 51U);
        for (int i = 0; i <= 50; ++i) {
            EXPECT_EQ(progress[static_cast<std::size_t>(i)], 2 * i);
        }
    }
    EXPECT_EQ(report["summary"]["passed"], 3);
    EXPECT_EQ(report["exitCode"], 0);
}

TEST(SimulatedMachine, SendsTheSameKeysByteForByteWhateverTheSystemsLanguage) {
    struct Message {
        const char* scenario;
        const char* tests;
        const char* key;
    };
    for (const char* language : {"de_DE.UTF-8", "fr_FR.UTF-8"}) {
        vexil::tests::setEnvironment("LC_ALL", language);
        vexil::tests::setEnvironment("LANGUAGE", language);
        for (const auto& [scenario, tests, key] :
             {Message{"small_memory", "1", "TOTAL_SURFACES_TESTED: 4/4"},
              Message{"failing_map", "1", "A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"},
              Message{"wrong_pixel", "3", "INCONSISTENCY_FOUND_WHILE_COMPARING_IMAGES"},
              Message{"wrong_float", "17", "MATH_OP_TEST_FAIL_MESSAGE"},
              Message{"cuda_no_memory", "11", "FAILED_TO_ALLOCATE_GPU_MEMORY"}}) {
            const auto report = reportOf(scenario, {"--tests", tests});
            for (const auto& run : report["runs"]) {
                ASSERT_EQ(run["messages"].size(), 1U) << scenario;
                EXPECT_EQ(run["messages"][0]["key"], key);
            }
            for (const auto& row : report["cards"][0]["rows"]) {
                EXPECT_EQ(row["key"].get<std::string>().find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_"),
                          std::string::npos)
                    << row;
            }
        }
    }
    vexil::tests::setEnvironment("LC_ALL", "");
    vexil::tests::setEnvironment("LANGUAGE", "");
}

TEST(SimulatedMachine, ListsItsCardsWithIntelLast) {
    const auto document = jsonOf({"--machine", "simulated", "cards", "--json"});
    EXPECT_EQ(document["schema"], "vexil.cards/1");
    EXPECT_EQ(document["machine"], "simulated");
    ASSERT_EQ(document["cards"].size(), 3U);
    EXPECT_EQ(document["cards"][0]["id"], "0100");
    EXPECT_EQ(document["cards"][1]["id"], "0a00");
    EXPECT_EQ(document["cards"][2]["name"], "Intel UHD Graphics 630");
    std::set<std::string> rows;
    for (const auto& row : document["cards"][0]["rows"]) {
        rows.insert(row["key"]);
    }
    EXPECT_TRUE(rows.contains("DIRECTX_VIDEO_CARD_MEMORY")) << "Direct3D was matched with the card";
}

TEST(SimulatedMachine, LacksEachFunctionThatALibraryCannotHide) {
    struct Lacking {
        const char* machine;
        bool inDirect3D, usageOfIntel, temperatureOfIntel, temperatureOfNvidia;
    };
    constexpr Lacking machines[] = {
        {R"("description": "nothing is missing")", true, true, true, true},
        {R"("kernelGraphics": {"missingFunction": "D3DKMTOpenAdapterFromDeviceName"})", false, false, true,
         true},
        {R"("kernelGraphics": {"missingFunction": "D3DKMTQueryStatistics"})", true, false, true, true},
        {R"("kernelGraphics": {"missingFunction": "D3DKMTCloseAdapter"})", true, true, true, true},
        {R"("driverService": {"missingFunction": "CreateVXKService"})", true, true, false, true},
        {R"("driverService": {"missingFunction": "DestroyVXKService"})", true, true, true, true},
        {R"("nvapi": {"missingFunctions": ["nvapi_QueryInterface"]})", true, true, true, false},
    };
    const auto file = vexil::tests::testFolder() / "lacking.json";
    for (const auto& lacking : machines) {
        std::ofstream(file) << R"({"schema": "vexil.scenario/1", )" << lacking.machine << R"(, "cards": [
            {"vendorId": "10DE", "deviceId": "2503", "location": "01:00.0", "nvapi": {"sensors": [{"celsius": 44}]}},
            {"vendorId": "8086", "deviceId": "3E92", "location": "00:02.0"}]})";
        const auto cards = jsonOf({"--machine", "simulated:" + file.string(), "cards", "--json"})["cards"];
        ASSERT_EQ(cards.size(), 2U) << lacking.machine;
        const auto& nvidia = cards[0];
        const auto& intel = cards[1];
        ASSERT_EQ(nvidia["id"], "0100") << lacking.machine;
        const auto hasMemoryRow = std::ranges::any_of(
            intel["rows"], [](const Json& row) { return row["key"] == "DIRECTX_VIDEO_CARD_MEMORY"; });
        EXPECT_EQ(hasMemoryRow, lacking.inDirect3D) << lacking.machine;
        EXPECT_EQ(!intel["live"]["usagePercent"].is_null(), lacking.usageOfIntel) << lacking.machine;
        EXPECT_EQ(!intel["live"]["temperatureCelsius"].is_null(), lacking.temperatureOfIntel)
            << lacking.machine;
        EXPECT_EQ(!nvidia["live"]["temperatureCelsius"].is_null(), lacking.temperatureOfNvidia)
            << lacking.machine;
    }
}

TEST(SimulatedMachine, SaysOfTheDriversVersionOnlyOnNvidiaCardsThatItIsTooOldAndOffersTheirTestsAllTheSame) {
    const auto file = vexil::tests::testFolder() / "driver.json";
    const std::string machine = "simulated:" + file.string();
    const Json notice = {"CUDA_DRIVER_OUT_TO_DATE"};
    for (const auto& [version, notices] : {std::pair{"11020", notice}, std::pair{"11030", Json::array()}}) {
        std::ofstream(file) << R"({"schema": "vexil.scenario/1", "cudaDriverVersion": )" << version
                            << R"(, "cards": [
            {"vendorId": "10DE", "deviceId": "2503", "location": "01:00.0", "cuda": {"memoryMiB": 64}},
            {"vendorId": "1002", "deviceId": "73DF", "location": "0a:00.0"},
            {"vendorId": "8086", "deviceId": "3E92", "location": "00:02.0"}]})";
        const auto cards = jsonOf({"--machine", machine, "cards", "--json"})["cards"];
        EXPECT_EQ(cards.size(), 3U);
        for (const auto& card : cards) {
            EXPECT_EQ(card["notices"], card["id"] == "0100" ? notices : Json::array()) << version << card;
        }
        int ofCuda = 0;
        const auto tests = jsonOf({"--machine", machine, "tests", "--json"})["tests"];
        for (const auto& test : tests) {
            if (test["name"].get<std::string>().starts_with("CUDA")) {
                EXPECT_EQ(test["supportedBy"], Json::array({"0100"})) << version << test;
                ++ofCuda;
            }
        }
        EXPECT_EQ(ofCuda, 8);
    }
}

TEST(SimulatedMachine, ListsTheSixteenTestsInCatalogueOrder) {
    const auto document = jsonOf({"--machine", "simulated", "tests", "--json"});
    EXPECT_EQ(document["schema"], "vexil.tests/1");
    std::vector<int> ids;
    for (const auto& test : document["tests"]) {
        ids.push_back(test["id"]);
        EXPECT_TRUE(test["name"].is_string());
        EXPECT_TRUE(test["tooltip"].is_string());
        EXPECT_TRUE(test["group"].is_string());
        EXPECT_TRUE(test["groupRank"].is_number());
        EXPECT_EQ(test["available"], true) << test["id"];
    }
    EXPECT_EQ(ids, (std::vector<int>{1, 3, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 4, 90, 5, 21}));
}

TEST(SimulatedMachine, WritesTheSameImagesInTwoRuns) {
    const auto first = reportOf("byte_flip", {"--tests", "1"});
    const auto second = reportOf("byte_flip", {"--tests", "1"});
    EXPECT_EQ(first["runs"][0]["progress"], second["runs"][0]["progress"]);
}

TEST(SimulatedMachine, FillsTheMemoryThatACardReallyHasInTheExtendedTest) {
    const auto report = reportOf("healthy", {"--tests", "4", "--card", "0100"});
    ASSERT_EQ(report["runs"].size(), 1U);
    EXPECT_EQ(report["runs"][0]["result"], 1);
    const std::string message = report["runs"][0]["messages"][0]["key"];
    EXPECT_TRUE(message.starts_with("TOTAL_SURFACES_TESTED: ")) << message;
    EXPECT_GT(std::stoi(message.substr(23)), 50);
}

TEST(SimulatedMachine, SaysWhatIsWrongWithAScenario) {
    const auto file = vexil::tests::testFolder() / "misspelt.json";
    std::ofstream(file)
        << R"({"schema": "vexil.scenario/1", "cards": [{"vendorId": "10DE", "deviceId": "2503",
        "location": "01:00.0", "direct3d": {"fualts": []}}]})";
    const auto end = runProgram({"--machine", "simulated:" + file.string(), "run"});
    EXPECT_EQ(end.code, 2);
    EXPECT_NE(end.err.find("cards[0].direct3d.fualts: is not a field"), std::string::npos) << end.err;
    EXPECT_EQ(std::ranges::count(end.err, '\n'), 1);
    std::filesystem::remove(file);
}

} // namespace
} // namespace vexil::host::tests
