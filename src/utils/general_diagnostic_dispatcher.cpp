#include "utils/general_diagnostic_dispatcher.h"

#include "core/device.h"
#include "core/test.h"

#include <utility>

namespace vexil::utils {

using core::TestExecution;

namespace {

std::shared_ptr<core::Device> lockDevice(const std::shared_ptr<const TestExecution>& execution) {
    return execution ? execution->device.lock() : nullptr;
}

} // namespace

GeneralDiagnosticDispatcher::GeneralDiagnosticDispatcher(unsigned hardwareThreads,
                                                         ThreadPool::PinThread pinThread)
    : pool_(workerCount(hardwareThreads), std::move(pinThread)) {}

bool GeneralDiagnosticDispatcher::canStart(const std::shared_ptr<const TestExecution>& execution) const {
    const auto device = lockDevice(execution);
    if (!device) {
        return true;
    }
    const auto id = device->id();
    if (busyDevices_.contains(id) || (moduleWideDevice_ && *moduleWideDevice_ == id)) {
        return false;
    }
    // Scope 0 exactly: any other scope than 0 and 1 takes the place when it starts, but does not wait for it.
    if (execution->scope == TestExecution::wholeModule && moduleWideDevice_) {
        return false;
    }
    return !(execution->test->requiresExclusiveRun() && exclusiveRunning_);
}

void GeneralDiagnosticDispatcher::execute(std::unique_ptr<core::TaskInterface> task) {
    const std::shared_ptr<core::TaskInterface> shared = std::move(task);
    pool_.submit([shared] {
        if (shared) {
            shared->run();
        }
    });
}

void GeneralDiagnosticDispatcher::finished(const std::shared_ptr<const TestExecution>& execution) {
    const auto device = lockDevice(execution);
    if (!device) {
        return;
    }
    if (execution->test->requiresExclusiveRun()) {
        exclusiveRunning_ = false;
    }
    if (execution->scope == TestExecution::ownDevice) {
        busyDevices_.erase(device->id());
    } else {
        moduleWideDevice_.reset();
    }
}

void GeneralDiagnosticDispatcher::started(const std::shared_ptr<const TestExecution>& execution) {
    const auto device = lockDevice(execution);
    if (!device) {
        return;
    }
    if (execution->test->requiresExclusiveRun()) {
        exclusiveRunning_ = true;
    }
    if (execution->scope == TestExecution::ownDevice) {
        busyDevices_.insert(device->id());
    } else {
        moduleWideDevice_ = std::make_unique<std::string>(device->id());
    }
}

} // namespace vexil::utils
