#include "host/core/exit_code.h"
#include "host/core/machine.h"
#include "host/core/simulated_machine.h"
#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <system_error>

namespace vexil::host {
namespace {

TEST(Machines, AreRealUnlessANeededCardIsMissing) {
    EXPECT_FALSE(chooseMachine("", false, false).simulated);
    EXPECT_FALSE(chooseMachine("", true, true).simulated);
    EXPECT_FALSE(chooseMachine("real", true, false).simulated);
    const auto fallBack = chooseMachine("", true, false);
    EXPECT_TRUE(fallBack.simulated);
    EXPECT_TRUE(fallBack.forLackOfCards);
    EXPECT_EQ(fallBack.scenario, "healthy");
}

TEST(Machines, AreSimulatedByTheBuiltInOrANamedScenario) {
    EXPECT_EQ(chooseMachine("simulated", false, true).scenario, "healthy");
    EXPECT_FALSE(chooseMachine("simulated", true, false).forLackOfCards);
    EXPECT_EQ(chooseMachine("simulated:broken/file.json", true, false).scenario, "broken/file.json");
    EXPECT_STREQ(chooseMachine("simulated", false, true).name(), "simulated");
    EXPECT_STREQ(chooseMachine("real", false, true).name(), "real");
}

TEST(Machines, AreRefusedByAnyOtherName) {
    for (const char* choice : {"virtual", "simulated:", "Real", "real:x"}) {
        EXPECT_THROW(static_cast<void>(chooseMachine(choice, true, true)), UsageError) << choice;
    }
}

class SimulatedMachines : public ::testing::Test {
protected:
    SimulatedMachines() : folder_(vexil::tests::testFolder()) {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
        std::filesystem::create_directories(folder_ / "scenarios");
        std::filesystem::copy(platform::programFolder() / "scenarios" / "healthy.json", folder_ / "scenarios",
                              std::filesystem::copy_options::overwrite_existing);
    }
    ~SimulatedMachines() override {
        std::filesystem::current_path(before_);
        // On Windows a library that is open stays.
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    [[nodiscard]] std::string errorOf(const std::string& scenario, ExitCode code = ExitCode::Usage) const {
        try {
            const SimulatedMachine machine(folder_, scenario);
        } catch (const HostError& error) {
            EXPECT_EQ(error.code(), code);
            return error.what();
        }
        return "no error";
    }

    std::filesystem::path before_ = std::filesystem::current_path();
    std::filesystem::path folder_;
};

TEST_F(SimulatedMachines, TellTheStandInsTheirScenario) {
    const SimulatedMachine machine(folder_, "healthy");
    EXPECT_EQ(machine.scenarioFile(), folder_ / "scenarios" / "healthy.json");
    EXPECT_EQ(platform::environmentVariable("VEXIL_SCENARIO"), toUtf8(machine.scenarioFile()));
}

TEST_F(SimulatedMachines, TakeTheAbsolutePathOfAFile) {
    std::filesystem::current_path(folder_);
    const SimulatedMachine machine(folder_, "scenarios/healthy.json");
    EXPECT_TRUE(machine.scenarioFile().is_absolute());
    EXPECT_TRUE(std::filesystem::equivalent(machine.scenarioFile(), folder_ / "scenarios" / "healthy.json"));
}

TEST_F(SimulatedMachines, OpenTheStandInsInTheOrderOfTheirNamesAndNothingElse) {
    const auto built = platform::programFolder() / "fake_modules" / VEXIL_FAKE_MODULE_FILE;
    const auto extension = built.extension();
    std::filesystem::create_directories(folder_ / "simulated");
    for (const char* name : {"libb", "liba", "libc"}) {
        std::filesystem::copy(built, (folder_ / "simulated" / name).replace_extension(extension),
                              std::filesystem::copy_options::skip_existing);
    }
    std::ofstream(folder_ / "simulated" / "notes.txt") << "no library";
    const SimulatedMachine machine(folder_, "healthy");
    ASSERT_EQ(machine.standIns().size(), 3U);
    EXPECT_EQ(machine.standIns()[0].stem(), "liba");
    EXPECT_EQ(machine.standIns()[2].stem(), "libc");
}

TEST_F(SimulatedMachines, NameAStandInThatCannotBeOpened) {
    const auto extension = std::filesystem::path(VEXIL_FAKE_MODULE_FILE).extension();
    std::filesystem::create_directories(folder_ / "simulated");
    const auto file = (folder_ / "simulated" / "broken").replace_extension(extension);
    std::ofstream(file) << "no library";
    EXPECT_TRUE(errorOf("healthy", ExitCode::InternalError)
                    .starts_with("the simulated library '" + toUtf8(file) + "' cannot be opened: "));
}

TEST_F(SimulatedMachines, NameAnUnknownScenario) {
    EXPECT_EQ(errorOf("sick"),
              "unknown scenario 'sick': built in is healthy, or name the path of a scenario file");
}

TEST_F(SimulatedMachines, NameAScenarioThatNoFileCanHaveForAName) {
    const std::string name(300, 'a');
    EXPECT_TRUE(errorOf(name).starts_with("unknown scenario '" + name + "': ")) << errorOf(name);
}

TEST_F(SimulatedMachines, NameAFolderThatIsNoScenario) {
    const auto path = toUtf8(folder_);
    EXPECT_TRUE(errorOf(path).starts_with(path + ": cannot be ")) << errorOf(path);
}

TEST_F(SimulatedMachines, NameTheFileOfAScenarioThatIsNoJson) {
    const auto file = toUtf8(folder_ / "broken.json");
    std::ofstream(pathFromUtf8(file)) << "cards: none";
    EXPECT_NE(errorOf(file).find(file), std::string::npos) << errorOf(file);
}

TEST_F(SimulatedMachines, NameAnUnknownFieldOfAScenario) {
    const auto file = toUtf8(folder_ / "field.json");
    std::ofstream(pathFromUtf8(file))
        << R"({"schema":"vexil.scenario/1","description":"x","cards":[],"colour":1})";
    const auto error = errorOf(file);
    EXPECT_NE(error.find(file), std::string::npos) << error;
    EXPECT_NE(error.find("colour"), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos);
}

} // namespace
} // namespace vexil::host
