#include "../asking_program.h"

#include "support/virtual_display.h"

#include <nlohmann/json.hpp>

#include <cstdlib>

// Without a display, which Windows always has, and with an interrupt as a terminal sends it.
namespace vexil::host {
namespace {

class AskingProgramWithoutADisplay : public AskingProgram {
protected:
    AskingProgramWithoutADisplay() { unsetenv("DISPLAY"); }
};

TEST_F(AskingProgramWithoutADisplay, RunsTheWireframeTest) {
    const auto end = runTests("1,21");
    EXPECT_EQ(end.code, 0) << end.out << end.err;
    EXPECT_EQ(end.err, "");
    EXPECT_NE(end.out.find("2 passed"), std::string::npos) << end.out;
}

TEST_F(AskingProgramWithoutADisplay, RefusesTheStressTestAndSaysWhy) {
    const auto end = runTests("5");
    EXPECT_EQ(end.code, 2);
    EXPECT_EQ(end.err,
              "vxe-host: test 5 (Stress test) needs a display for its window, and none can be reached\n");
}

TEST_F(AskingProgramWithoutADisplay, OffersNoStressTest) {
    const auto end = run({"--machine", "real", "tests", "--json"});
    ASSERT_EQ(end.code, 0) << end.err;
    EXPECT_EQ(nlohmann::json::parse(end.out)["tests"][14]["supportedBy"], nlohmann::json::array());
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

} // namespace
} // namespace vexil::host
