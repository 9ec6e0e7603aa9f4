#pragma once

#include <future>
#include <utility>

namespace vexil::core {

/// What the dispatcher runs on a worker thread.
class TaskInterface {
public:
    virtual ~TaskInterface() = default;
    virtual void run() = 0;
};

template <typename Callable>
class Task;

/// A packaged task that is run once, however often `run` is called: a second invocation of a packaged task
/// would throw on the worker.
template <>
class Task<std::packaged_task<void()>> final : public TaskInterface {
public:
    explicit Task(std::packaged_task<void()> callable) : callable_(std::move(callable)) {}

    void run() override {
        if (!std::exchange(done_, true)) {
            callable_();
        }
    }

private:
    std::packaged_task<void()> callable_;
    bool done_ = false;
};

} // namespace vexil::core
