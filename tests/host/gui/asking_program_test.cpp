#include "asking_program.h"

#include <nlohmann/json.hpp>

namespace vexil::host {
namespace {

TEST_F(AskingProgram, AnswersItsModuleOnTheGuiThread) {
    const auto end = runTests("1,21");
    EXPECT_EQ(end.code, 0) << end.out << end.err;
    EXPECT_NE(end.out.find("THREAD: gui"), std::string::npos) << end.out;
    EXPECT_NE(end.out.find("PARENT: Default - Window"), std::string::npos) << end.out;
    EXPECT_NE(end.out.find("2 passed"), std::string::npos) << end.out;
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
