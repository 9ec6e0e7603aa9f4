#include "platform/suspended_thread.h"

#include <pthread.h>
#include <sched.h>

#include <semaphore>
#include <system_error>
#include <thread>
#include <utility>

namespace vexil::platform {

namespace {

class Thread final : public SuspendedThread {
public:
    explicit Thread(Routine routine)
        : routine_(std::move(routine)), thread_([this] {
              start_.acquire();
              if (!abandoned_) {
                  result_ = routine_();
              }
          }) {}

    ~Thread() override {
        if (!resumed_) {
            abandoned_ = true;
            start_.release();
        }
        if (thread_.joinable()) {
            thread_.join();
        }
    }

    bool setPriority(std::int32_t priority) override {
        const sched_param parameters{};
        const int policy = priority <= idlePriority ? SCHED_IDLE : SCHED_OTHER;
        return pthread_setschedparam(thread_.native_handle(), policy, &parameters) == 0;
    }

    bool setGroupAffinity(std::uint16_t group, std::uint64_t mask) override {
        cpu_set_t set;
        CPU_ZERO(&set);
        for (unsigned bit = 0; bit < processorsOfGroup; ++bit) {
            if ((mask >> bit & 1) != 0) {
                // Numbers beyond the set's size are left out, and an empty set is refused by the system.
                CPU_SET(std::size_t{group} * processorsOfGroup + bit, &set);
            }
        }
        group_ = group;
        return pthread_setaffinity_np(thread_.native_handle(), sizeof(set), &set) == 0;
    }

    bool setAffinityMask(std::uint64_t mask) override { return setGroupAffinity(group_, mask); }

    bool resume() override {
        if (!std::exchange(resumed_, true)) {
            start_.release();
        }
        return true;
    }

    bool wait() override {
        if (thread_.joinable()) {
            thread_.join();
        }
        return true;
    }

    std::optional<std::uint32_t> exitCode() override {
        return thread_.joinable() ? std::nullopt : std::optional(result_);
    }

private:
    Routine routine_;
    std::binary_semaphore start_{0};
    bool abandoned_ = false;
    bool resumed_ = false;
    std::uint16_t group_ = 0;
    std::uint32_t result_ = 0;
    std::thread thread_; // last: it runs with all the others
};

} // namespace

std::unique_ptr<SuspendedThread> createSuspendedThread(SuspendedThread::Routine routine) {
    try {
        return std::make_unique<Thread>(std::move(routine));
    } catch (const std::system_error&) {
        return nullptr;
    }
}

} // namespace vexil::platform
