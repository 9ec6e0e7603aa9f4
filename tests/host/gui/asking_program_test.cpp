#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"
#include "support/virtual_display.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdlib>

namespace vexil::host {
namespace {

/// vxe-host in a process of its own, with the module that asks.
class AskingProgram : public ::testing::Test {
protected:
    AskingProgram() {
        unsetenv("QT_QPA_PLATFORM");
        unsetenv("DISPLAY");
        setenv("LC_ALL", "C", 1);
    }

    static tests::ProgramEnd run(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--module", toUtf8(platform::programFolder() / "fake_modules" /
                                                              VEXIL_ASKING_MODULE_FILE)});
        return tests::runProgram(arguments);
    }
    static tests::ProgramEnd runTests(const std::string& ids) {
        return run({"--machine", "real", "--language", "en", "run", "--card", "0100", "--tests", ids});
    }
};

TEST_F(AskingProgram, RunsTheWireframeTestOnAMachineWithoutADisplay) {
    const auto end = runTests("1,21");
    EXPECT_EQ(end.code, 0) << end.out << end.err;
    EXPECT_EQ(end.err, "");
    EXPECT_NE(end.out.find("THREAD: gui"), std::string::npos) << end.out;
    EXPECT_NE(end.out.find("PARENT: Default - Window"), std::string::npos) << end.out;
    EXPECT_NE(end.out.find("2 passed"), std::string::npos) << end.out;
}

TEST_F(AskingProgram, RefusesTheStressTestThereAndSaysWhy) {
    const auto end = runTests("5");
    EXPECT_EQ(end.code, 2);
    EXPECT_EQ(end.err,
              "vxe-host: test 5 (Stress test) needs a display for its window, and none can be reached\n");
}

TEST_F(AskingProgram, ClosesAnOpenDialogWithinASecondOfAnInterrupt) {
    const vexil::tests::VirtualDisplay display("1024x768x24");
    ASSERT_TRUE(display.name().has_value()) << "Xvfb did not start";
    setenv("DISPLAY", display.name()->c_str(), 1);
    const auto end = runTests("5,1");
    EXPECT_EQ(end.code, 3) << end.out << end.err;
    EXPECT_EQ(end.err, "");
    EXPECT_NE(end.out.find("ANSWER: 0"), std::string::npos) << end.out;
    const auto place = end.out.find("STOPPED_AFTER: ");
    ASSERT_NE(place, std::string::npos) << end.out;
    const int late = std::stoi(end.out.substr(place + std::string("STOPPED_AFTER: ").size()));
    EXPECT_GE(late, 0);
    EXPECT_LT(late, 2000);
    EXPECT_NE(end.out.find("1 without a verdict, 1 not run"), std::string::npos) << end.out;
}

TEST_F(AskingProgram, ListsTheParametersOfItsTests) {
    const auto end = run({"--machine", "real", "tests", "--json"});
    ASSERT_EQ(end.code, 0) << end.err;
    const auto document = nlohmann::json::parse(end.out);
    const auto& stress = document["tests"][14];
    EXPECT_EQ(stress["id"], 5);
    EXPECT_EQ(stress["parameters"][0]["key"], "DURATION");
    EXPECT_EQ(stress["parameters"][0]["default"], "5");
    EXPECT_EQ(stress["parameters"][0]["range"], "[1:9999]");
    EXPECT_EQ(stress["parameters"][1]["key"], "LOAD");
    EXPECT_EQ(stress["parameters"][1]["flags"], 4);
    EXPECT_EQ(stress["supportedBy"], nlohmann::json::array()) << "there is no display";
    EXPECT_EQ(document["tests"][15]["supportedBy"], (nlohmann::json{"0100", "0a00"}));
}

TEST_F(AskingProgram, RefusesAnInvalidValueOfARealParameter) {
    const auto end =
        run({"--machine", "real", "--language", "en", "run", "--tests", "21", "--set", "LOAD=0"});
    EXPECT_EQ(end.code, 2);
    EXPECT_EQ(end.err,
              "vxe-host: '0' is no value for LOAD of test 21 (Wireframe stress test), which takes [1:100]\n");
    EXPECT_EQ(run({"--machine", "real", "run", "--tests", "21", "--set", "WINDOW_SIZE=400x400"}).code, 2);
}

} // namespace
} // namespace vexil::host
