#include "stress_runs.h"
#include "support/environment.h"

#include <gmock/gmock.h>

// The wireframe stress test the whole way, where no window is needed.
namespace vexil::host::tests {
namespace {

using testing::ElementsAre;

class WireframeOnAMachine : public testing::Test {
protected:
    /// Nobody who could see a window.
    void SetUp() override { vexil::tests::setEnvironment("DISPLAY", ""); }
};

TEST_F(WireframeOnAMachine, PassesWithoutADisplayAndSendsTheThreeLines) {
    const auto run = runStress(OneCard(Json::array(), workingSensors).machine(), "21", "0.2");
    EXPECT_EQ(run.result, 1);
    EXPECT_EQ(run.exitCode, 0);
    expectResultLines(run.messages);
    EXPECT_GT(run.progress.size(), 2U);
    EXPECT_THAT(run.progress, testing::Contains(100));
}

TEST_F(WireframeOnAMachine, CouldNotExecuteTheOperationWhenTheCardIsGoneInAFrame) {
    for (const int frame : {1, 2, 9}) {
        const Json fault = {{"kind", "removedInDrawing"}, {"drawing", frame}};
        const auto run = runStress(OneCard(Json::array({fault})).machine(), "21", "0.5");
        EXPECT_EQ(run.result, 5);
        EXPECT_THAT(run.messages, ElementsAre("A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"));
        EXPECT_EQ(run.progress.back(), 100);
        EXPECT_EQ(run.exitCode, 3);
    }
}

TEST_F(WireframeOnAMachine, CouldNotExecuteTheOperationWithoutItsRendererOrItsModel) {
    for (const char* call : {"CreateRenderTargetView", "CreateDepthStencilState", "CreateVertexShader"}) {
        const Json fault = {{"kind", "failingCall"}, {"call", call}};
        const auto run = runStress(OneCard(Json::array({fault})).machine(), "21", "0.5");
        EXPECT_EQ(run.result, 5) << call;
        EXPECT_THAT(run.messages, ElementsAre("A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION")) << call;
    }
}

TEST_F(WireframeOnAMachine, HasNoTemperatureItemForACardWithoutASensor) {
    const auto run = runStress(OneCard(Json::array(), {{"usagePercent", 97}}).machine(), "21", "0.05");
    EXPECT_EQ(run.result, 1);
    EXPECT_THAT(run.messages, testing::Each(testing::AllOf(testing::HasSubstr("GPU_USAGE: 97%"),
                                                           testing::HasSubstr("FPS: "),
                                                           testing::Not(testing::HasSubstr("TEMPERATURE")))));
}

TEST_F(WireframeOnAMachine, TakesATemperatureOfZeroOrBelowForNone) {
    for (const int celsius : {0, -5}) {
        const Json nvapi = {{"sensors", {{{"celsius", celsius}}}}, {"usagePercent", 97}};
        const auto run = runStress(OneCard(Json::array(), nvapi).machine(), "21", "0.05");
        EXPECT_EQ(run.result, 1);
        EXPECT_THAT(run.messages, testing::Each(testing::Not(testing::HasSubstr("TEMPERATURE"))));
    }
}

TEST_F(WireframeOnAMachine, IsNoPlaceForTheWindowAndTheHostSaysWhy) {
    const auto end = runProgram({"--machine", "simulated", "run", "--card", "0100", "--tests", "5"});
    EXPECT_EQ(end.code, 2);
    EXPECT_EQ(end.err,
              "vxe-host: test 5 (Stress test) needs a display for its window, and none can be reached\n");
}

} // namespace
} // namespace vexil::host::tests
