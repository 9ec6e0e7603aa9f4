#pragma once

#include "utils/general_diagnostic_dispatcher.h"

#include <atomic>

namespace vexil::module::video_card {

/// Adds to the suite's dispatcher that two stress tests never run at once, even on two cards. Its three
/// questions need a non-null execution, since they look at the test first.
class VideoCardDispatcher final : public utils::GeneralDiagnosticDispatcher {
public:
    using GeneralDiagnosticDispatcher::GeneralDiagnosticDispatcher;

    [[nodiscard]] bool canStart(const std::shared_ptr<const core::TestExecution>& execution) const override;
    void finished(const std::shared_ptr<const core::TestExecution>& execution) override;
    void started(const std::shared_ptr<const core::TestExecution>& execution) override;

private:
    std::atomic<bool> stressRunning_ = false;
};

} // namespace vexil::module::video_card
