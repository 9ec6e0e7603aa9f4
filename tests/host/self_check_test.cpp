#include "core/test_result.h"
#include "host/core/exit_code.h"
#include "host/core/self_check.h"
#include "host/platform/process.h"
#include "module/video_card/catalogue.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

namespace vexil::host {
namespace {

CheckedOutcome outcome(std::optional<std::uint8_t> result, std::vector<std::string> messages) {
    return {"0100", 1, "VIDEO_MEMORY_TEST", {1, 3, {"A", "SURFACES: *"}, {}}, result, std::move(messages)};
}

std::filesystem::path hostProgram() {
    return (platform::programFolder() / "vxe-host").replace_extension(platform::programFile().extension());
}

TEST(CheckedOutcome, IsAsRequiredWithTheResultAndTheMessagesInTheirOrder) {
    EXPECT_TRUE(outcome(3, {"A", "SURFACES: 1/2"}).asRequired());
    EXPECT_FALSE(outcome(1, {"A", "SURFACES: 1/2"}).asRequired());
    EXPECT_FALSE(outcome(3, {"SURFACES: 1/2", "A"}).asRequired());
    EXPECT_FALSE(outcome(3, {"A"}).asRequired());
    EXPECT_FALSE(outcome(3, {"A", "SURFACES: 1/2", "B"}).asRequired());
    EXPECT_FALSE(outcome(3, {"AB", "SURFACES: 1/2"}).asRequired());
    EXPECT_FALSE(outcome(3, {"A", "SURFACE"}).asRequired());
}

TEST(CheckedOutcome, IsNotAsRequiredWhereTheTestRanOnNoCard) {
    EXPECT_FALSE(outcome(std::nullopt, {}).asRequired());
}

TEST(SelfCheck, HasSomethingRequiredOfEveryBuiltInScenario) {
    const auto machines = selfCheckMachines(platform::programFolder());
    const auto folder = platform::programFolder() / "scenarios";
    const auto files = std::distance(std::filesystem::directory_iterator(folder), {});
    EXPECT_EQ(machines.size(), static_cast<std::size_t>(files));
    EXPECT_TRUE(std::ranges::is_sorted(machines, {}, &SelfCheckMachine::scenario));
}

TEST(SelfCheck, BreaksACardForEveryTestThatCanFail) {
    std::set<std::int32_t> broken;
    for (const auto& machine : selfCheckMachines(platform::programFolder())) {
        for (const auto& required : machine.required) {
            if (required.result == core::TestResult::Failed) {
                broken.insert(required.test);
            }
        }
    }
    // The wireframe stress test judges the card's health alone, and the thermal tool nothing.
    for (const std::int32_t test : {1, 3, 4, 5, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}) {
        EXPECT_TRUE(broken.contains(test)) << "no scenario shows test " << test << " finding a fault";
    }
}

TEST(SelfCheck, HasEveryTestPassOnAHealthyCardAndEndOtherwiseOnABrokenOne) {
    std::map<std::int32_t, std::set<std::uint8_t>> results;
    for (const auto& machine : selfCheckMachines(platform::programFolder())) {
        for (const auto& required : machine.required) {
            if (required.result != core::TestResult::Passed || machine.scenario == "healthy") {
                results[required.test].insert(required.result);
            }
        }
    }
    for (const auto& row : module::video_card::catalogue) {
        EXPECT_TRUE(results[row.id].contains(core::TestResult::Passed)) << row.id;
        EXPECT_GT(results[row.id].size(), 1U) << row.id;
    }
}

TEST(SelfCheck, LeavesOutWhatHasNoDisplayToBeSeenOnAndNothingElse) {
    SelfCheckMachine machine{"healthy", "", {{1, 1, {}, {}}, {5, 1, {}, {}}, {21, 1, {}, {}}}};
    EXPECT_EQ(leaveOutLacking(machine, {std::nullopt, true}), 0U);
    EXPECT_EQ(machine.required.size(), 3U);
    EXPECT_EQ(leaveOutLacking(machine, {std::nullopt, false}), 1U);
    ASSERT_EQ(machine.required.size(), 2U);
    EXPECT_EQ(machine.required[0].test, 1);
    EXPECT_EQ(machine.required[1].test, 21);
}

TEST(SelfCheck, NamesAScenarioThatCannotBeRead) {
    const auto folder = vexil::tests::testFolder();
    std::filesystem::create_directories(folder / "scenarios");
    std::ofstream(folder / "scenarios" / "odd.json")
        << R"({"schema": "vexil.scenario/1", "required": [{"test": 1, "result": 9}]})";
    try {
        static_cast<void>(selfCheckMachines(folder));
        FAIL();
    } catch (const UsageError& error) {
        EXPECT_NE(std::string(error.what()).find("odd.json: required[0].result: "), std::string::npos)
            << error.what();
    }
}

TEST(SelfCheck, SaysWhichScenarioCameToNoReport) {
    const SelfCheckMachine machine{"no_such_scenario", "", {{1, 1, {}, {}}}};
    try {
        static_cast<void>(checkMachine(hostProgram(), "", machine));
        FAIL();
    } catch (const InternalError& error) {
        EXPECT_NE(std::string(error.what()).find("'no_such_scenario' ended with 2 and left no report: "),
                  std::string::npos)
            << error.what();
    }
}

TEST(SelfCheck, SaysWhyAProgramCannotBeStarted) {
    const SelfCheckMachine machine{"healthy", "", {{1, 1, {}, {}}}};
    EXPECT_THROW(static_cast<void>(checkMachine("no-such-program", "", machine)), InternalError);
}

} // namespace
} // namespace vexil::host
