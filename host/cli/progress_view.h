#pragma once

#include "host/cli/terminal.h"
#include "host/core/card.h"
#include "host/core/language.h"
#include "host/core/plan_execution.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace vexil::host {

/// Shows the runs as they go: a bar that is drawn anew on a terminal, plain lines now and then elsewhere.
class ProgressView final : public RunObserver {
public:
    /// `plan` tells how wide the names are. `cancel` is only looked at, to tell that a stop is under way.
    ProgressView(Terminal& terminal, const Language& language, const std::vector<Card>& cards,
                 const RunPlan& plan, const volatile std::uint8_t& cancel);

    void runStarted(std::size_t card, const core::TestDescriptor& test) override;
    void runProgress(std::uint8_t percent, std::chrono::duration<double> elapsed) override;
    void runFinished(const TestRun& run) override;

private:
    [[nodiscard]] std::string bar(unsigned percent) const;

    Terminal& terminal_;
    const Language& language_;
    const std::vector<Card>& cards_;
    const volatile std::uint8_t& cancel_;
    std::size_t nameWidth_ = 0;
    std::size_t barWidth_ = 0;
    std::size_t runs_ = 0;
    std::size_t started_ = 0;
    std::size_t shownCard_;
    std::string name_;
    std::chrono::duration<double> lastLine_{};
    bool stoppingTold_ = false;
};

/// How a result is painted and marked.
[[nodiscard]] Style resultStyle(const TestRun& run);
[[nodiscard]] std::string_view resultMark(const Terminal& terminal, const TestRun& run);

} // namespace vexil::host
