#include "host/platform/process.h"
#include "machine/stress_runs.h"
#include "support/environment.h"
#include "support/virtual_display.h"
#include "support/window_system_user.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <future>
#include <sys/wait.h>
#include <unistd.h>

// What ends the stress test before its time: keys, sizes and signals that really come.
namespace vexil::host::tests {
namespace {

constexpr std::uint32_t escape = 0xFF1B;
constexpr auto patience = std::chrono::seconds(30);

class LeavingTheStressTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(display_.name()) << "no X server could be started";
        vexil::tests::setEnvironment("DISPLAY", *display_.name());
        user_.emplace(*display_.name());
    }

    const vexil::tests::VirtualDisplay display_{"1280x1024x24"};
    std::optional<vexil::tests::WindowSystemUser> user_;
    const OneCard card_{Json::array(), workingSensors};
};

TEST_F(LeavingTheStressTest, ByEscapeEndsItWithoutAMessage) {
    auto run = std::async(std::launch::async, [&] { return runStress(card_.machine(), "5", "1"); });
    EXPECT_TRUE(user_->waitForFocus(400, 400, patience)) << "the window has the keyboard";
    EXPECT_TRUE(user_->press('x'));
    EXPECT_EQ(run.wait_for(std::chrono::seconds(2)), std::future_status::timeout)
        << "another key does nothing";
    EXPECT_TRUE(user_->press(escape));
    const auto end = run.get();
    EXPECT_EQ(end.result, 5);
    EXPECT_EQ(end.exitCode, 3);
    EXPECT_THAT(end.messages, testing::IsEmpty());
    EXPECT_LT(end.seconds, 55) << "of a minute";
}

TEST_F(LeavingTheStressTest, ByAnotherSizeOfTheWindowCouldNotExecuteTheOperation) {
    auto run = std::async(std::launch::async, [&] { return runStress(card_.machine(), "5", "1"); });
    EXPECT_TRUE(user_->waitForFocus(400, 400, patience));
    user_->resizeFocused(500, 400);
    const auto end = run.get();
    EXPECT_EQ(end.result, 5);
    EXPECT_EQ(end.exitCode, 3);
    EXPECT_THAT(end.messages, testing::ElementsAre("A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"));
    EXPECT_LT(end.seconds, 55) << "of a minute";
}

TEST_F(LeavingTheStressTest, ByCtrlCEndsTheRunWithItsSummary) {
    const auto output = vexil::tests::testFolder() / "output";
    const auto program = (platform::programFolder() / "vxe-host").string();
    const auto machine = card_.machine();
    const pid_t child = fork();
    if (child == 0) {
        ASSERT_NE(std::freopen(output.c_str(), "w", stdout), nullptr);
        execl(program.c_str(), "vxe-host", "--machine", machine.c_str(), "run", "--card", "0100", "--tests",
              "5", nullptr);
        _exit(127);
    }
    ASSERT_GT(child, 0);
    EXPECT_TRUE(user_->waitForFocus(400, 400, patience));
    EXPECT_EQ(kill(child, SIGINT), 0);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    std::ifstream stream(output);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_THAT(text, testing::HasSubstr("1 without a verdict"));
    EXPECT_THAT(text, testing::HasSubstr("Not completed"));
}

} // namespace
} // namespace vexil::host::tests
