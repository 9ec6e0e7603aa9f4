#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace vexil::tests {

/// Ends the process if it is not destroyed in time: two threads that wait for each other leave no other way
/// out.
class TimeBound {
public:
    explicit TimeBound(std::chrono::milliseconds atMost)
        : guard_([this, atMost] {
              std::unique_lock lock(mutex_);
              if (!changed_.wait_for(lock, atMost, [this] { return over_; })) {
                  std::fputs("The test has exceeded its time: a deadlock\n", stderr);
                  std::_Exit(1);
              }
          }) {}
    TimeBound(const TimeBound&) = delete;
    TimeBound& operator=(const TimeBound&) = delete;
    ~TimeBound() {
        {
            const std::lock_guard lock(mutex_);
            over_ = true;
        }
        changed_.notify_all();
        guard_.join();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool over_ = false;
    std::thread guard_;
};

} // namespace vexil::tests
