#include "host/core/plan_execution.h"

#include "core/test_result.h"

namespace vexil::host {

using core::TestResult;

void RunSummary::count(const TestRun& run) {
    if (!run.error.empty()) {
        ++programErrors;
    } else if (run.result == TestResult::Passed) {
        ++passed;
    } else if (run.result == TestResult::Failed) {
        ++failed;
    } else if (run.result == TestResult::CleanupFailed) {
        ++cleanupFailed;
    } else {
        ++noVerdict;
    }
}

ExitCode RunSummary::exitCode() const {
    if (failed > 0) {
        return ExitCode::CardFailed;
    }
    if (cleanupFailed > 0) {
        return ExitCode::CleanupFailed;
    }
    if (programErrors > 0) {
        return ExitCode::InternalError;
    }
    return noVerdict > 0 || notRun > 0 || passed == 0 ? ExitCode::NoVerdict : ExitCode::AllPassed;
}

PlanOutcome executePlan(RunPlan& plan, const std::vector<Card>& cards, TestRunner& runner, bool failFast,
                        const volatile std::uint8_t& cancel, RunObserver& observer) {
    PlanOutcome outcome;
    for (auto& planned : plan.runs) {
        const auto& summary = outcome.summary;
        if (cancel != 0 || (failFast && (summary.failed > 0 || summary.cleanupFailed > 0))) {
            ++outcome.summary.notRun;
            continue;
        }
        observer.runStarted(planned.card, planned.test->descriptor());
        auto run = runner.run(cards[planned.card], *planned.test,
                              [&](const RunReporter& reporter, std::chrono::duration<double> elapsed) {
                                  observer.runProgress(reporter.currentProgress(), elapsed);
                              });
        run.card = planned.card;
        // What the test still holds is released before the next one needs it.
        planned.test.reset();
        outcome.summary.count(run);
        observer.runFinished(run);
        outcome.runs.push_back(std::move(run));
    }
    return outcome;
}

} // namespace vexil::host
