#include "utils/thread_pool.h"

namespace vexil::utils {

namespace {

std::uint32_t shortThreadId(std::thread::id id) {
    return static_cast<std::uint32_t>(std::hash<std::thread::id>{}(id));
}

} // namespace

ThreadPool::ThreadPool(unsigned workers, PinThread pinThread) {
    try {
        threads_.reserve(workers);
        for (unsigned i = 0; i < workers; ++i) {
            threads_.emplace_back([this, pinThread] { work(pinThread); });
        }
        for (const auto& thread : threads_) {
            threadBusy_[shortThreadId(thread.get_id())] = false;
        }
    } catch (...) {
        // The workers that did start must be joined before their pool goes away.
        stop();
        throw;
    }
}

ThreadPool::~ThreadPool() { stop(); }

void ThreadPool::stop() {
    if (stopped_.exchange(true)) {
        return;
    }
    queue_.invalidate();
    for (auto& thread : threads_) {
        if (thread.joinable()) {
            thread.join();
        }
    }
}

void ThreadPool::work(const PinThread& pinThread) {
    const auto counter = affinityCounter_.fetch_add(1);
    pinThread(workerAffinityMask(counter, affinitySpan_));
    const auto id = shortThreadId(std::this_thread::get_id());
    for (;;) {
        try {
            if (stopped_ || !queue_.isValid()) {
                return;
            }
            const auto task = queue_.pop();
            threadBusy_[id] = true;
            task->run();
            threadBusy_[id] = false;
        } catch (...) {
            // A worker outlives whatever a task throws.
        }
    }
}

} // namespace vexil::utils
