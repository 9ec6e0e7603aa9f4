#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace vexil::host
