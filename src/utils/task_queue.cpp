#include "utils/task_queue.h"

#include <stdexcept>
#include <utility>

namespace vexil::utils {

TaskQueue::~TaskQueue() { invalidate(); }

void TaskQueue::push(std::unique_ptr<core::TaskInterface> task) {
    if (invalidated_) {
        return;
    }
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    changed_.notify_one();
}

std::unique_ptr<core::TaskInterface> TaskQueue::pop() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !tasks_.empty() || invalidated_; });
    if (tasks_.empty()) {
        throw std::logic_error("Invalidated queue!");
    }
    auto task = std::move(tasks_.front());
    tasks_.pop_front();
    return task;
}

void TaskQueue::invalidate() {
    {
        const std::lock_guard lock(mutex_);
        invalidated_ = true;
    }
    changed_.notify_all();
}

} // namespace vexil::utils
