#include "platform/desktop_rectangle.h"
#include "stress_runs.h"
#include "support/display.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

// The stress test the whole way, in its window.
namespace vexil::host::tests {
namespace {

using testing::Contains;
using testing::IsEmpty;

class StressWindowOnAMachine : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(display_.isThere()) << "no X server could be started"; }

private:
    vexil::tests::OwnDisplay display_;
};

/// As the parameter has them; the full screen fits everywhere.
std::vector<std::string> sizesThatFit() {
    const auto desktop = vexil::platform::desktopRectangle();
    std::vector<std::string> sizes = {"400x400", "1024x768", "FULL_SCREEN"};
    if (desktop.right >= 1280 && desktop.bottom >= 1024) {
        sizes.emplace_back("1280x1024");
    }
    if (desktop.right >= 1920 && desktop.bottom >= 1080) {
        sizes.emplace_back("1920x1080");
    }
    return sizes;
}

TEST_F(StressWindowOnAMachine, PassesInEveryWindowThatFitsAndSendsTheThreeLines) {
    const OneCard card(Json::array(), workingSensors);
    for (const auto& size : sizesThatFit()) {
        const auto run = runStress(card.machine(), "5", "0.05", {"--set", "WINDOW_SIZE=" + size});
        EXPECT_EQ(run.result, 1) << size;
        EXPECT_EQ(run.exitCode, 0) << size;
        expectResultLines(run.messages);
        EXPECT_THAT(run.progress, Contains(100)) << size;
    }
}

TEST_F(StressWindowOnAMachine, FailsOnAPixelThatDiffersAtTheEnd) {
    const Json fault = {{"kind", "differingPixel"}, {"from", 1}, {"x", 399}, {"y", 7}};
    const auto run = runStress(OneCard(Json::array({fault}), workingSensors).machine(), "5", "0.05");
    EXPECT_EQ(run.result, 3);
    EXPECT_THAT(run.messages, IsEmpty());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.progress.back(), 100);
}

TEST_F(StressWindowOnAMachine, DoesNotFindAPixelThatDifferedForAWhileOnly) {
    const Json fault = {{"kind", "differingPixel"}, {"from", 0.5}, {"until", 1.5}, {"x", 3}, {"y", 7}};
    const auto run = runStress(OneCard(Json::array({fault}), workingSensors).machine(), "5", "0.05");
    EXPECT_EQ(run.result, 1);
    expectResultLines(run.messages);
}

TEST_F(StressWindowOnAMachine, ThatIsInfiniteEndsWithThePixelThatDiffersAtAPeriodsEnd) {
    const Json fault = {{"kind", "differingPixel"}, {"from", 1.5}, {"x", 0}, {"y", 0}};
    const auto run = runStress(OneCard(Json::array({fault}), workingSensors).machine(), "5", "0.04",
                               {"--set", "BURN_IN=TRUE", "--set", "INFINITE=TRUE"});
    EXPECT_EQ(run.result, 3);
    EXPECT_THAT(run.messages, Contains("[VIDEO_CARD_BURN_IN_TEMPERATURE](61)"));
    EXPECT_THAT(run.messages, testing::Not(Contains(testing::StartsWith("MINIMUM"))));
}

TEST_F(StressWindowOnAMachine, ThatIsInfiniteGoesOnOverItsPeriodsUntilOneEndsWithADifference) {
    const Json passing = {{"kind", "differingPixel"}, {"until", 0.5}, {"x", 399}, {"y", 399}};
    const Json staying = {{"kind", "differingPixel"}, {"fromPeriod", 3}, {"x", 200}, {"y", 200}};
    const auto run = runStress(OneCard(Json::array({passing, staying}), workingSensors).machine(), "5",
                               "0.04", {"--set", "BURN_IN=TRUE", "--set", "INFINITE=TRUE"});
    EXPECT_EQ(run.result, 3);
    EXPECT_GE(run.seconds, 3 * 2.0) << "the first two periods of two seconds ended with equal pictures";
    const auto lines = std::ranges::count(run.messages, "[VIDEO_CARD_BURN_IN_TEMPERATURE](61)");
    EXPECT_GE(lines, 1);
    EXPECT_LE(lines, 4) << "after a restart they pause until the clock has caught up, as it stands";
    EXPECT_EQ(lines, std::ssize(run.messages)) << "no result lines";
}

TEST_F(StressWindowOnAMachine, ThatCannotBeBuiltSaysNothing) {
    for (const char* call : {"CreateSwapChain", "CreatePixelShader", "CreateBuffer"}) {
        const Json fault = {{"kind", "failingCall"}, {"call", call}};
        const auto run = runStress(OneCard(Json::array({fault})).machine(), "5", "0.05");
        EXPECT_EQ(run.result, 5) << call;
        EXPECT_THAT(run.messages, IsEmpty()) << call;
        EXPECT_EQ(run.exitCode, 3) << call;
    }
}

TEST_F(StressWindowOnAMachine, SurvivesABindThatDoesNotReachTheCardInAFrameBeforeTheLast) {
    const Json fault = {{"kind", "lostCall"}, {"call", "OMSetRenderTargets"}, {"number", 5}};
    const auto run = runStress(OneCard(Json::array({fault}), workingSensors).machine(), "5", "0.05");
    EXPECT_EQ(run.result, 1);
    expectResultLines(run.messages);
}

TEST_F(StressWindowOnAMachine, DoesNotLookAtTheCardsHealthAsItStands) {
    const Json fault = {{"kind", "removedInDrawing"}, {"drawing", 30}};
    const auto run = runStress(OneCard(Json::array({fault}), workingSensors).machine(), "5", "0.05");
    EXPECT_EQ(run.result, 1) << "the frames' results are not looked at, and the picture at the end is equal";
}

TEST_F(StressWindowOnAMachine, LeavesOutSensorsThatAreMissing) {
    const auto run = runStress(OneCard(Json::array(), {{"usagePercent", 97}}).machine(), "5", "0.05");
    EXPECT_EQ(run.result, 1);
    EXPECT_THAT(run.messages, testing::Each(testing::Not(testing::HasSubstr("TEMPERATURE"))));
}

} // namespace
} // namespace vexil::host::tests
