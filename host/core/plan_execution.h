#pragma once

#include "host/core/exit_code.h"
#include "host/core/run_plan.h"
#include "host/core/test_run.h"
#include "host/core/test_runner.h"

#include <chrono>
#include <cstdint>
#include <vector>

namespace vexil::host {

/// The runs of a plan, counted by what they say.
struct RunSummary {
    std::size_t passed = 0;
    std::size_t failed = 0;
    std::size_t noVerdict = 0; ///< results 0, 4 and 5
    std::size_t cleanupFailed = 0;
    std::size_t programErrors = 0; ///< runs that an error of the program ended
    std::size_t notRun = 0;        ///< planned, and not started after a stop

    void count(const TestRun& run);
    /// A failed card outranks everything, since it is proven whatever else happened. Then memory that a card
    /// still holds, then an error of the program, then a missing verdict. A plan without a single run proves
    /// nothing.
    [[nodiscard]] ExitCode exitCode() const;
};

/// Watches the execution of a plan, on the thread that executes it.
class RunObserver {
public:
    virtual ~RunObserver() = default;
    virtual void runStarted(std::size_t card, const core::TestDescriptor& test) = 0;
    virtual void runProgress(std::uint8_t percent, std::chrono::duration<double> elapsed) = 0;
    virtual void runFinished(const TestRun& run) = 0;
};

struct PlanOutcome {
    std::vector<TestRun> runs;
    RunSummary summary;
};

/// Executes the runs one after the other. A set cancel byte lets the running test stop and starts no other;
/// `failFast` starts none after a failed card or one that keeps memory.
[[nodiscard]] PlanOutcome executePlan(RunPlan& plan, const std::vector<Card>& cards, TestRunner& runner,
                                      bool failFast, const volatile std::uint8_t& cancel,
                                      RunObserver& observer);

} // namespace vexil::host
