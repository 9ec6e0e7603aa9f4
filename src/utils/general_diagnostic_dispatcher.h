#pragma once

#include "core/diagnostic_dispatcher.h"
#include "utils/thread_pool.h"

#include <memory>
#include <set>
#include <string>

namespace vexil::utils {

/// Knows which devices are occupied and runs tasks on a pool. The occupancy has no lock: `canStart`,
/// `started` and `finished` are called from one thread at a time.
class GeneralDiagnosticDispatcher : public core::DiagnosticDispatcher {
public:
    /// `hardwareThreads` as the library reports it, 0 if unknown.
    GeneralDiagnosticDispatcher(unsigned hardwareThreads, ThreadPool::PinThread pinThread);

    /// True for a null execution and for a device that is gone: the run itself then answers.
    [[nodiscard]] bool canStart(const std::shared_ptr<const core::TestExecution>& execution) const override;
    void execute(std::unique_ptr<core::TaskInterface> task) override;
    void finished(const std::shared_ptr<const core::TestExecution>& execution) override;
    void started(const std::shared_ptr<const core::TestExecution>& execution) override;

    [[nodiscard]] std::size_t workers() const { return pool_.size(); }

private:
    std::set<std::string> busyDevices_;
    std::unique_ptr<std::string> moduleWideDevice_;
    bool exclusiveRunning_ = false;
    ThreadPool pool_;
};

} // namespace vexil::utils
