#include "simulated/scenario/scenario.h"

#include "host/platform/process.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace vexil::simulated {
namespace {

/// The error of a scenario with this text, or an empty text if it has none.
std::string errorOf(const std::string& json) {
    const auto file = tests::testFolder() / "scenario.json";
    std::ofstream(file) << json;
    try {
        static_cast<void>(loadScenario(file.string()));
        return {};
    } catch (const ScenarioError& error) {
        std::string text = error.what();
        EXPECT_TRUE(text.starts_with(file.string() + ": ")) << text;
        return text.substr(file.string().size() + 2);
    }
}

std::string withCard(const std::string& card) {
    return R"({"schema": "vexil.scenario/1", "cards": [{"vendorId": "10DE", "deviceId": "2503",
               "location": "01:00.0"}, )" +
           card + "]}";
}

struct Broken {
    const char* json;
    const char* error;
};

TEST(Scenario, NamesTheFieldAndTheReasonOfAnError) {
    const Broken all[] = {
        {"[]", "the file: must be an object"},
        {"{}", "schema: is missing"},
        {R"({"schema": 1})", "schema: must be a text, is 1"},
        {R"({"schema": "other"})", "schema: must be \"vexil.scenario/1\""},
        {R"({"schema": "vexil.scenario/1", "cards": {}})", "cards: must be a list, is {}"},
        {R"({"schema": "vexil.scenario/1", "cards": [1]})", "cards[0]: must be an object"},
    };
    for (const auto& [json, error] : all) {
        EXPECT_EQ(errorOf(json), error) << json;
    }
}

TEST(Scenario, NamesAFieldThatItDoesNotKnowAndThoseThatItKnows) {
    const auto error = errorOf(R"({"schema": "vexil.scenario/1", "crads": []})");
    EXPECT_TRUE(error.starts_with("crads: is not a field of a scenario here; known are ")) << error;
    EXPECT_NE(error.find("cards, "), std::string::npos) << error;
}

TEST(Scenario, NamesAFieldThatStandsTwice) {
    EXPECT_EQ(errorOf(withCard(R"({"vendorId": "10DE", "deviceId": "2503", "location": "02:00.0",
                                   "direct3d": {"faults": []}, "direct3d": {}})")),
              "direct3d: stands twice in one object");
    EXPECT_EQ(errorOf(R"({"schema": "vexil.scenario/1", "cards": [], "description": "", "cards": []})"),
              "cards: stands twice in one object");
}

TEST(Scenario, ChecksTheIdentityOfEachCard) {
    EXPECT_EQ(errorOf(withCard("{}")), "cards[1].vendorId: is missing");
    EXPECT_EQ(errorOf(withCard(R"({"vendorId": "10de", "deviceId": "2503", "location": "02:00.0"})")),
              "cards[1].vendorId: must be four upper-case hexadecimal digits, is \"10de\"");
    EXPECT_EQ(errorOf(withCard(R"({"vendorId": "10DE", "deviceId": "253", "location": "02:00.0"})")),
              "cards[1].deviceId: must be four upper-case hexadecimal digits, is \"253\"");
    EXPECT_EQ(errorOf(withCard(R"({"vendorId": "10DE", "deviceId": "2503", "location": "2:0.0"})")),
              "cards[1].location: must be a PCI location in the form \"01:00.0\", is \"2:0.0\"");
    EXPECT_EQ(errorOf(withCard(R"({"vendorId": "10DE", "deviceId": "2503", "location": "02:00.0",
                                   "hasInterface": "yes"})")),
              "cards[1].hasInterface: must be true or false, is \"yes\"");
    EXPECT_TRUE(
        errorOf(withCard(R"({"vendorId": "10DE", "deviceId": "2503", "location": "02:00.0", "nmae": ""})"))
            .starts_with("cards[1].nmae: is not a field of a scenario here"));
}

TEST(Scenario, SaysThatAFileIsNoJson) {
    for (const char* text : {"", "{nonsense", "\xFF\xFE{}", R"({"cudaDriverVersion": 1e999})"}) {
        EXPECT_TRUE(errorOf(text).starts_with("is no JSON: ")) << text;
    }
}

TEST(Scenario, SaysThatAFileCannotBeOpened) {
    try {
        static_cast<void>(loadScenario("/no/such/scenario.json"));
        FAIL() << "nothing was thrown";
    } catch (const ScenarioError& error) {
        EXPECT_STREQ(error.what(), "/no/such/scenario.json: cannot be opened");
    }
}

TEST(Scenario, SaysThatAFolderIsNoFile) {
    const auto folder = tests::testFolder().string();
    try {
        static_cast<void>(loadScenario(folder));
        FAIL() << "nothing was thrown";
    } catch (const ScenarioError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(folder + ": cannot be ")) << error.what();
    }
}

TEST(Scenario, MayHaveANameBeyondAscii) {
    const auto file = tests::testFolder() / std::filesystem::path(u8"Prüfung ✓.json");
    std::ofstream(file) << R"({"schema": "vexil.scenario/1", "description": "found"})";
    const auto name = file.u8string();
    EXPECT_EQ(loadScenario({name.begin(), name.end()}).description, "found");
}

TEST(Scenario, OfTheProcessIsTheOneThatTheEnvironmentNames) {
    using host::platform::setEnvironmentVariable;
    setEnvironmentVariable("VEXIL_SCENARIO", "Prüfung ✓.json");
    EXPECT_EQ(scenarioFileOfProcess(), "Prüfung ✓.json");
    setEnvironmentVariable("VEXIL_SCENARIO", "");
    EXPECT_EQ(scenarioFileOfProcess(), std::nullopt);
}

TEST(Scenario, MayHaveNoCards) {
    EXPECT_EQ(errorOf(R"({"schema": "vexil.scenario/1", "cards": []})"), "");
    EXPECT_EQ(errorOf(R"({"schema": "vexil.scenario/1"})"), "");
}

TEST(Scenario, GivesEachCardALuidAndAPathOfItsOwn) {
    const auto scenario = loadScenario(std::string(VEXIL_SCENARIOS) + "/healthy.json");
    ASSERT_EQ(scenario.cards.size(), 3U);
    EXPECT_EQ(scenario.cards[0].vendorId, "10DE");
    EXPECT_EQ(scenario.cards[1].vendorId, "1002");
    EXPECT_EQ(scenario.cards[2].vendorId, "8086");
    EXPECT_NE(scenario.cards[0].luid, scenario.cards[1].luid);
    EXPECT_NE(scenario.cards[0].devicePath(), scenario.cards[1].devicePath());
    EXPECT_EQ(scenario.cards[1].locationInformation(), "PCI bus 10, device 0, function 0");
}

TEST(Scenario, IsValidInEveryFileThatComesWithTheProgram) {
    for (const auto& entry : std::filesystem::directory_iterator(VEXIL_SCENARIOS)) {
        EXPECT_NO_THROW(static_cast<void>(loadScenario(entry.path().string()))) << entry.path();
    }
}

TEST(FieldReader, TakesNumbersInDecimalAndHexadecimal) {
    const auto file = tests::testFolder() / "numbers.json";
    std::ofstream(file) << R"({"a": 7, "b": "0x1F", "c": "0x", "d": -1, "e": 1.5, "f": "0x11112222333344445",
                               "g": "E_FAIL", "h": 99})";
    auto reader = readJsonFile(file.string());
    EXPECT_EQ(reader.number("a", 0, 10), 7U);
    EXPECT_EQ(reader.number("b", 0, 100), 31U);
    EXPECT_EQ(reader.number("absent", 0, 100, 3), 3U);
    EXPECT_EQ(reader.namedNumber("g", {{"E_FAIL", 5}}, 100), 5U);
    EXPECT_EQ(reader.namedNumber("a", {{"E_FAIL", 5}}, 100), 7U);
    EXPECT_EQ(reader.namedNumber("absent", {}, 100, 9), 9U);
    for (const char* field : {"c", "d", "e", "f", "g", "h", "absent"}) {
        EXPECT_THROW(static_cast<void>(reader.number(field, 0, 10)), ScenarioError) << field;
    }
}

TEST(FieldReader, TakesWordsOfAFixedListAndRealNumbersOfARange) {
    const auto file = tests::testFolder() / "words.json";
    std::ofstream(file) << R"({"word": "two", "real": 0.5})";
    auto reader = readJsonFile(file.string());
    EXPECT_EQ(reader.choice("word", {"one", "two"}), 1U);
    EXPECT_THROW(static_cast<void>(reader.choice("word", {"one"})), ScenarioError);
    EXPECT_EQ(reader.real("real", 0, 1), 0.5);
    EXPECT_THROW(static_cast<void>(reader.real("real", 1, 2)), ScenarioError);
    EXPECT_NO_THROW(reader.finish());
}

} // namespace
} // namespace vexil::simulated
