#pragma once

#include "core/task.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

namespace vexil::utils {

/// The tasks that wait for a worker, first come first served.
class TaskQueue {
public:
    TaskQueue() = default;
    TaskQueue(const TaskQueue&) = delete;
    TaskQueue& operator=(const TaskQueue&) = delete;
    /// Wakes whoever waits and destroys the tasks that are left; they never run.
    virtual ~TaskQueue();

    /// Queues the task, or destroys it at once if the queue has been invalidated.
    void push(std::unique_ptr<core::TaskInterface> task);
    /// Waits for a task. Throws `std::logic_error` once the queue is invalidated and empty.
    [[nodiscard]] std::unique_ptr<core::TaskInterface> pop();
    [[nodiscard]] bool isValid() const { return !invalidated_; }
    void invalidate();

private:
    std::deque<std::unique_ptr<core::TaskInterface>> tasks_;
    std::mutex mutex_;
    std::atomic<bool> invalidated_ = false;
    std::condition_variable changed_;
};

} // namespace vexil::utils
