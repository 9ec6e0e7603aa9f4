#pragma once

#include "core/task.h"
#include "core/test.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vexil::host {

/// How a task ended. A module keeps no result, so it leaves the worker through here.
struct TaskEnd {
    std::uint8_t result = core::TestResult::NotCompleted;
    /// What went wrong in the program, empty if nothing did. Tests report failures by result and message, so
    /// an exception that reaches the task is an error of the module.
    std::string error;
};

/// Where the host waits for a task.
class TaskWatch {
public:
    void end(TaskEnd end);
    /// Wakes the waiting host, to look at what has changed.
    void news();
    /// Returns on news, at the end of the task, or after `atMost`.
    std::optional<TaskEnd> wait(std::chrono::milliseconds atMost);

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool news_ = false;
    std::optional<TaskEnd> end_;
};

/// Runs one test on the dispatcher's worker. A task that is destroyed without having run ends with an error,
/// so that nobody waits for it for ever.
class TestTask final : public core::TaskInterface {
public:
    /// `test` and what `arguments` point to must live until the watch has told of the end.
    TestTask(core::Test& test, core::TestRunArguments arguments, std::shared_ptr<TaskWatch> watch);
    ~TestTask() override;

    void run() override;

private:
    core::Test& test_;
    core::TestRunArguments arguments_;
    std::shared_ptr<TaskWatch> watch_;
    bool ended_ = false;
};

} // namespace vexil::host
