#pragma once

#include "host/core/card.h"
#include "host/core/plan_execution.h"
#include "host/core/run_log.h"

#include <string>
#include <vector>

namespace vexil::host {

/// Logs each run as it ends, so that what was found stays should the program not reach its own end.
class LoggedRuns final : public RunObserver {
public:
    /// Every call goes on to `next`. `log` may be null: then nothing is logged.
    LoggedRuns(RunObserver& next, RunLog* log, const std::vector<Card>& cards, std::string moduleKey,
               const Language& language)
        : next_(next), log_(log), cards_(cards), moduleKey_(std::move(moduleKey)), language_(language) {}

    void runStarted(std::size_t card, const core::TestDescriptor& test) override {
        next_.runStarted(card, test);
    }
    void runProgress(std::uint8_t percent, std::chrono::duration<double> elapsed) override {
        next_.runProgress(percent, elapsed);
    }
    void runFinished(const TestRun& run) override {
        if (log_ != nullptr) {
            log_->append(resultRecord(run, cards_[run.card].record, moduleKey_, language_));
        }
        next_.runFinished(run);
    }

private:
    RunObserver& next_;
    RunLog* log_;
    const std::vector<Card>& cards_;
    std::string moduleKey_;
    const Language& language_;
};

} // namespace vexil::host
