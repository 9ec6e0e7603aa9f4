#include "host/core/plan_execution.h"
#include "host/fake_module/fake_module.h"

#include <gtest/gtest.h>

namespace vexil::host {
namespace {

using tests::FakeCase;
using tests::FakeModule;

class SilentObserver : public RunObserver {
public:
    void runStarted(std::size_t, const core::TestDescriptor&) override { ++started; }
    void runProgress(std::uint8_t, std::chrono::duration<double>) override {}
    void runFinished(const TestRun&) override { ++finished; }

    int started = 0;
    int finished = 0;
};

class PlanExecution : public ::testing::Test {
protected:
    [[nodiscard]] PlanOutcome execute(const std::string& ids, bool failFast = false) {
        auto plan = planRuns(module_, cards_, {"0100", ids, {}}, {});
        TestRunner runner(module_.dispatcher(), {&cancel_, nullptr, {}});
        return executePlan(plan, cards_, runner, failFast, cancel_, observer_);
    }
    [[nodiscard]] ExitCode codeOf(const std::string& ids) { return execute(ids).summary.exitCode(); }

    FakeModule module_{FakeCase::Scripted};
    std::vector<Card> cards_ = scanCards(module_);
    volatile std::uint8_t cancel_ = 0;
    SilentObserver observer_;
};

TEST_F(PlanExecution, EndsWith0IfEveryRunPassed) { EXPECT_EQ(codeOf("1,4,90"), ExitCode::AllPassed); }

TEST_F(PlanExecution, EndsWith1IfACardFailed) { EXPECT_EQ(codeOf("1,3"), ExitCode::CardFailed); }

TEST_F(PlanExecution, EndsWith3IfARunEndedWithoutAVerdict) {
    EXPECT_EQ(codeOf("1,11"), ExitCode::NoVerdict) << "result 5";
    EXPECT_EQ(codeOf("1,15"), ExitCode::NoVerdict) << "result 4";
    EXPECT_EQ(codeOf("1,16"), ExitCode::NoVerdict) << "result 0";
}

TEST_F(PlanExecution, EndsWith4IfMemoryCouldNotBeReleased) {
    EXPECT_EQ(codeOf("1,12"), ExitCode::CleanupFailed);
}

TEST_F(PlanExecution, EndsWith70IfATestThrew) { EXPECT_EQ(codeOf("1,13"), ExitCode::InternalError); }

TEST_F(PlanExecution, LetsAFailedCardOutrankEverything) {
    EXPECT_EQ(codeOf("11,12,13,3"), ExitCode::CardFailed);
}

TEST_F(PlanExecution, LetsKeptMemoryOutrankAProgramErrorAndThatAMissingVerdict) {
    EXPECT_EQ(codeOf("11,13,12"), ExitCode::CleanupFailed);
    EXPECT_EQ(codeOf("11,13"), ExitCode::InternalError);
}

TEST_F(PlanExecution, ProvesNothingWithoutARun) { EXPECT_EQ(RunSummary().exitCode(), ExitCode::NoVerdict); }

TEST_F(PlanExecution, CountsRunsByWhatTheySay) {
    const auto summary = execute("1,4,3,11,15,16,12,13").summary;
    EXPECT_EQ(summary.passed, 2U);
    EXPECT_EQ(summary.failed, 1U);
    EXPECT_EQ(summary.noVerdict, 3U);
    EXPECT_EQ(summary.cleanupFailed, 1U);
    EXPECT_EQ(summary.programErrors, 1U);
    EXPECT_EQ(summary.notRun, 0U);
    EXPECT_EQ(observer_.started, 8);
    EXPECT_EQ(observer_.finished, 8);
}

TEST_F(PlanExecution, CountsANumberThatIsNoResultAsNoVerdict) {
    RunSummary summary;
    TestRun run;
    run.result = 6;
    summary.count(run);
    EXPECT_EQ(summary.noVerdict, 1U);
    EXPECT_STREQ(resultName(6), "Unknown");
}

TEST_F(PlanExecution, NamesEachResult) {
    const std::vector<std::string> names = {"DeviceUnavailable", "Passed",      "CleanupFailed", "Failed",
                                            "NotSupported",      "NotCompleted"};
    for (std::uint8_t result = 0; result < names.size(); ++result) {
        EXPECT_EQ(resultName(result), names[result]);
    }
}

TEST_F(PlanExecution, StopsAtTheFirstFailedCardIfAskedTo) {
    const auto outcome = execute("1,3,4", true);
    EXPECT_EQ(outcome.runs.size(), 2U);
    EXPECT_EQ(outcome.summary.notRun, 1U);
    EXPECT_EQ(outcome.summary.exitCode(), ExitCode::CardFailed);
    EXPECT_EQ(execute("1,3,4", false).runs.size(), 3U);
}

TEST_F(PlanExecution, StopsAtKeptMemoryButNotAtAMissingVerdictIfAskedToFailFast) {
    EXPECT_EQ(execute("12,4", true).runs.size(), 1U);
    EXPECT_EQ(execute("11,15,4", true).runs.size(), 3U);
}

TEST_F(PlanExecution, StartsNoRunAfterAStopAndThenHasNoVerdict) {
    class StopAtFirstEnd final : public SilentObserver {
    public:
        explicit StopAtFirstEnd(volatile std::uint8_t& cancel) : cancel_(cancel) {}
        void runFinished(const TestRun&) override { cancel_ = 1; }

    private:
        volatile std::uint8_t& cancel_;
    };
    auto plan = planRuns(module_, cards_, {"0100", "1,4", {}}, {});
    TestRunner runner(module_.dispatcher(), {&cancel_, nullptr, {}});
    StopAtFirstEnd observer(cancel_);
    const auto outcome = executePlan(plan, cards_, runner, false, cancel_, observer);
    EXPECT_EQ(outcome.runs.size(), 1U);
    EXPECT_EQ(outcome.summary.notRun, 1U);
    EXPECT_EQ(outcome.summary.exitCode(), ExitCode::NoVerdict);
}

} // namespace
} // namespace vexil::host
