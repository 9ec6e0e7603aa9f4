#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vexil::host {
namespace {

tests::ProgramEnd run(const std::string& ids) {
    platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "scripted");
    const auto module = platform::programFolder() / "fake_modules" / VEXIL_FAKE_MODULE_FILE;
    return tests::runProgram({"--machine", "real", "--language", "en", "--module", toUtf8(module), "run",
                              "--card", "0100", "--tests", ids});
}

TEST(Interrupts, TheFirstStopsTheRunAndStillGivesASummary) {
    const auto end = run("17,1");
    EXPECT_EQ(end.code, 3);
    EXPECT_NE(end.out.find("Not completed"), std::string::npos) << end.out;
    EXPECT_NE(end.out.find("1 without a verdict, 1 not run"), std::string::npos) << end.out;
}

TEST(Interrupts, TheSecondEndsTheProcessWith130) {
    const auto end = run("18,1");
    EXPECT_EQ(end.code, 130);
    EXPECT_EQ(end.out.find("Summary"), std::string::npos);
}

/// A monitoring whose user presses Ctrl-C at that reading of a card; the machine has two. Gives the file.
std::string monitorUntil(const char* reading, const std::string& interval) {
    platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "scripted");
    platform::setEnvironmentVariable("VEXIL_FAKE_INTERRUPT_AT", reading);
    const auto module = platform::programFolder() / "fake_modules" / VEXIL_FAKE_MODULE_FILE;
    const auto file = vexil::tests::testFolder() / "samples.csv";
    const auto end = tests::runProgram({"--machine", "real", "--language", "en", "--module", toUtf8(module),
                                        "monitor", "--interval", interval, "--csv", toUtf8(file)});
    platform::setEnvironmentVariable("VEXIL_FAKE_INTERRUPT_AT", ""); // For the tests behind this one.
    EXPECT_EQ(end.code, 0) << end.err;
    EXPECT_NE(end.out.find("Ctrl-C ends the monitoring."), std::string::npos);
    EXPECT_NE(end.out.find("  Temperature       45 °C     45.0 °C       45 °C\n"), std::string::npos);
    EXPECT_TRUE(end.out.ends_with("Values written to " + toUtf8(file) + '\n'));
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_TRUE(text.ends_with('\n'));
    return text;
}

TEST(Interrupts, EndAMonitoringWith0AndAFileThatIsWhole) {
    // The fifth reading is the first of the third sample, which is still completed.
    const auto text = monitorUntil("5", "0.1");
    EXPECT_EQ(std::ranges::count(text, '\n'), 1 + 2 * 3) << text;
}

TEST(Interrupts, EndAMonitoringInTheMiddleOfALongWait) {
    const auto start = std::chrono::steady_clock::now();
    const auto text = monitorUntil("2", "3600");
    EXPECT_EQ(std::ranges::count(text, '\n'), 1 + 2) << text;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::minutes(5));
}

} // namespace
} // namespace vexil::host
