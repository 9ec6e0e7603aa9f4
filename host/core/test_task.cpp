#include "host/core/test_task.h"

#include <exception>
#include <utility>

namespace vexil::host {

void TaskWatch::end(TaskEnd end) {
    {
        const std::lock_guard lock(mutex_);
        end_ = std::move(end);
    }
    changed_.notify_all();
}

void TaskWatch::news() {
    {
        const std::lock_guard lock(mutex_);
        news_ = true;
    }
    changed_.notify_all();
}

std::optional<TaskEnd> TaskWatch::wait(std::chrono::milliseconds atMost) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, atMost, [this] { return news_ || end_; });
    news_ = false;
    return end_;
}

TestTask::TestTask(core::Test& test, core::TestRunArguments arguments, std::shared_ptr<TaskWatch> watch)
    : test_(test), arguments_(std::move(arguments)), watch_(std::move(watch)) {}

TestTask::~TestTask() {
    if (!ended_) {
        watch_->end({core::TestResult::NotCompleted, "the dispatcher dropped the task without running it"});
    }
}

void TestTask::run() {
    TaskEnd end;
    try {
        end.result = test_.execute(arguments_);
    } catch (const std::exception& error) {
        end.error = std::string("the test ended with an exception: ") + error.what();
    } catch (...) {
        end.error = "the test ended with an unknown exception";
    }
    ended_ = true;
    // The test may be destroyed from here on, and with it what the arguments hold weakly.
    arguments_ = {};
    watch_->end(std::move(end));
}

} // namespace vexil::host
