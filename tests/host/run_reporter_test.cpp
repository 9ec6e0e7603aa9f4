#include "host/core/run_reporter.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace vexil::host {
namespace {

class CountedInteraction final : public core::InputInteraction {
public:
    explicit CountedInteraction(int& asked) : asked_(asked) {}
    void ask() override { ++asked_; }
    void present() override {}

private:
    int& asked_;
};

TEST(RunReporter, KeepsEachProgressValueOnceInTheOrderSent) {
    RunReporter reporter;
    for (const std::uint8_t percent : std::to_array<std::uint8_t>({0, 2, 2, 50, 2, 100, 100, 0})) {
        reporter.setProgress(percent);
    }
    EXPECT_EQ(reporter.progress(), (std::vector<std::uint8_t>{0, 2, 50, 100}));
}

TEST(RunReporter, TellsTheLastValueEvenIfItGoesBack) {
    RunReporter reporter;
    EXPECT_EQ(reporter.currentProgress(), 0);
    reporter.setProgress(80);
    reporter.setProgress(20);
    EXPECT_EQ(reporter.currentProgress(), 20);
}

TEST(RunReporter, KeepsMessagesAsTheyWereSent) {
    RunReporter reporter;
    reporter.report({0, "FIRST"});
    reporter.report({1, "SECOND: 1/2"});
    const auto messages = reporter.messages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].kind, 0);
    EXPECT_EQ(messages[0].key, "FIRST");
    EXPECT_EQ(messages[1].kind, 1);
    EXPECT_EQ(messages[1].key, "SECOND: 1/2");
}

TEST(RunReporter, CallsBackAfterEachReportWithTheNewStateVisible) {
    std::vector<std::uint8_t> seen;
    RunReporter* watched = nullptr;
    RunReporter reporter([&] { seen.push_back(watched->currentProgress()); });
    watched = &reporter;
    reporter.setProgress(10);
    reporter.report({0, "KEY"});
    reporter.setProgress(20);
    EXPECT_EQ(seen, (std::vector<std::uint8_t>{10, 10, 20}));
}

TEST(RunReporter, LosesNothingThatSeveralThreadsReportAtOnce) {
    RunReporter reporter;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&reporter, thread] {
            for (int i = 0; i < 500; ++i) {
                reporter.report({0, std::to_string(thread)});
                reporter.setProgress(static_cast<std::uint8_t>((i + thread) % 101));
                static_cast<void>(reporter.messages().size());
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(reporter.messages().size(), 2000U);
    EXPECT_EQ(reporter.progress().size(), 101U);
}

TEST(RunReporter, LeavesTheAnswerOfAQuestionToTheHost) {
    int asked = 0;
    std::unique_ptr<core::InputInteraction> interaction = std::make_unique<CountedInteraction>(asked);
    RunReporter nobody;
    nobody.interact(interaction);
    EXPECT_EQ(asked, 0);
    RunReporter somebody({}, [](core::InputInteraction& question) { question.ask(); });
    somebody.interact(interaction);
    EXPECT_EQ(asked, 1);
    EXPECT_NE(interaction, nullptr);
}

} // namespace
} // namespace vexil::host
