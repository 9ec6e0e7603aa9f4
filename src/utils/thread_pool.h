#pragma once

#include "utils/task_queue.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace vexil::utils {

/// The mask, not the index, that the worker with the count `counter` is pinned with: 2, 3, 4, 1, 2, ... for a
/// span of 4 and counts from 1. All workers thus sit on the first three processors; hosts rely on the rest
/// being free.
[[nodiscard]] constexpr std::uint64_t workerAffinityMask(std::uint64_t counter, std::uint64_t span) {
    return counter % span + 1;
}

/// Workers for a machine of `hardwareThreads`: one less, or 2 if the number is not known (0). A machine with
/// one processor gets none, and tasks submitted there never run.
[[nodiscard]] constexpr unsigned workerCount(unsigned hardwareThreads) {
    return hardwareThreads == 0 ? 2U : hardwareThreads - 1U;
}

/// A fixed number of workers, each running one task at a time to its end.
class ThreadPool {
public:
    /// Pins the calling thread; a failure is the callee's to ignore.
    using PinThread = std::function<void(std::uint64_t mask)>;

    /// Starts the workers. Throws `std::system_error` if a thread cannot be created.
    ThreadPool(unsigned workers, PinThread pinThread);
    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;
    virtual ~ThreadPool();

    /// Queues the callable. What it throws is stored in the future.
    template <typename Callable>
    std::future<void> submit(Callable&& callable) {
        std::packaged_task<void()> packaged(std::forward<Callable>(callable));
        auto future = packaged.get_future();
        queue_.push(std::make_unique<core::Task<std::packaged_task<void()>>>(std::move(packaged)));
        return future;
    }

    /// Lets the running tasks end, drops the queued ones and joins the workers. Only the first call acts.
    void stop();

    [[nodiscard]] std::size_t size() const { return threads_.size(); }

private:
    void work(const PinThread& pinThread);

    TaskQueue queue_;
    std::atomic<bool> stopped_ = false;
    std::vector<std::thread> threads_;
    // Filled before the first task can be queued; afterwards each worker writes its own entry only.
    std::map<std::uint32_t, bool> threadBusy_;
    std::atomic<std::uint64_t> affinityCounter_ = 1;
    std::uint64_t affinitySpan_ = 4;
};

} // namespace vexil::utils
