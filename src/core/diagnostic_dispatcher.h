#pragma once

#include "core/task.h"

#include <cstdint>
#include <memory>

namespace vexil::core {

class Device;
class Test;

/// The host's record of one planned run, as far as the dispatcher reads it.
struct TestExecution {
    static constexpr std::int32_t wholeModule =
        0; ///< any scope but `ownDevice` occupies the module's one place
    static constexpr std::int32_t ownDevice = 1; ///< the run occupies its own device only

    std::weak_ptr<Device> device;
    std::int32_t scope = wholeModule;
    Test* test = nullptr;
};

/// Decides whether a run may start now, and runs it. `canStart`, `started` and `finished` are called from one
/// thread at a time.
class DiagnosticDispatcher {
public:
    virtual ~DiagnosticDispatcher() = default;
    [[nodiscard]] virtual bool canStart(const std::shared_ptr<const TestExecution>& execution) const = 0;
    /// Returns at once; the task runs on a worker thread. What it throws is lost, so a result leaves through
    /// the task's own fields.
    virtual void execute(std::unique_ptr<TaskInterface> task) = 0;
    virtual void finished(const std::shared_ptr<const TestExecution>& execution) = 0;
    virtual void started(const std::shared_ptr<const TestExecution>& execution) = 0;
};

} // namespace vexil::core
