#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>

namespace vexil::host {
namespace {

using tests::ProgramEnd;

/// The real program, with the fake module.
class CommandLine : public ::testing::Test {
protected:
    CommandLine() { useCase("scripted"); }

    static void useCase(const char* name) { platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", name); }
    [[nodiscard]] static ProgramEnd run(std::vector<std::string> arguments) {
        const auto module = platform::programFolder() / "fake_modules" / VEXIL_FAKE_MODULE_FILE;
        arguments.insert(arguments.end(),
                         {"--machine", "real", "--language", "en", "--module", toUtf8(module)});
        return tests::runProgram(arguments);
    }
};

TEST_F(CommandLine, ListsCardsAsJsonOnStandardOutput) {
    const auto end = run({"cards", "--json"});
    EXPECT_EQ(end.code, 0);
    EXPECT_TRUE(end.err.empty()) << end.err;
    EXPECT_EQ(nlohmann::json::parse(end.out)["schema"], "vexil.cards/1");
}

TEST_F(CommandLine, RunsAndEndsWithTheCodeOfTheRuns) {
    EXPECT_EQ(run({"run", "--tests", "3"}).code, 1);
    EXPECT_EQ(run({"run", "--tests", "11"}).code, 3);
    EXPECT_EQ(run({"run", "--tests", "12"}).code, 4);
    EXPECT_EQ(run({"run", "--tests", "13"}).code, 70);
    useCase("healthy");
    const auto end = run({"run"});
    EXPECT_EQ(end.code, 0);
    EXPECT_TRUE(end.out.starts_with("This machine\n"));
}

TEST_F(CommandLine, WritesNoEscapeSequencesIntoAFile) {
    EXPECT_EQ(run({"run", "--tests", "1,3"}).out.find('\x1b'), std::string::npos);
}

TEST_F(CommandLine, WritesAReport) {
    const auto file = vexil::tests::testFolder() / "command_line.json";
    const auto end = run({"run", "--tests", "1", "--report", toUtf8(file)});
    EXPECT_EQ(end.code, 0);
    std::ifstream stream(file);
    const auto report = nlohmann::json::parse(stream);
    EXPECT_EQ(report["summary"]["passed"], 2);
    EXPECT_FALSE(report["host"]["os"].get<std::string>().empty());
}

TEST_F(CommandLine, SaysWhatIsWrongInOneLineOnStandardError) {
    const auto end = run({"run", "--card", "0300"});
    EXPECT_EQ(end.code, 2);
    EXPECT_EQ(end.err, "vxe-host: unknown card '0300': the machine has 0100, 0a00\n");
}

TEST_F(CommandLine, NamesAModuleThatCannotBeLoaded) {
    const auto end = tests::runProgram({"--machine", "real", "--module", "no-module-here.so", "cards"});
    EXPECT_EQ(end.code, 2);
    EXPECT_EQ(end.err, "vxe-host: the module 'no-module-here.so' cannot be loaded: there is no such file\n");
}

TEST_F(CommandLine, NamesAScenarioThatIsNoJson) {
    const auto file = vexil::tests::testFolder() / "no_json.json";
    std::ofstream(file) << "cards";
    const auto end = tests::runProgram({"--machine", "simulated:" + toUtf8(file), "cards"});
    EXPECT_EQ(end.code, 2);
    EXPECT_NE(end.err.find(toUtf8(file)), std::string::npos) << end.err;
    EXPECT_EQ(std::count(end.err.begin(), end.err.end(), '\n'), 1);
    EXPECT_TRUE(end.out.find("cards") == std::string::npos);
}

} // namespace
} // namespace vexil::host
