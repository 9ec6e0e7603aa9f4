#include "platform/suspended_thread.h"

#include <windows.h>

#include <utility>

namespace vexil::platform {

namespace {

class Thread final : public SuspendedThread {
public:
    explicit Thread(Routine routine)
        : routine_(std::move(routine)),
          handle_(CreateThread(nullptr, 0, &Thread::run, this, CREATE_SUSPENDED, nullptr)) {}

    ~Thread() override {
        if (handle_ == nullptr) {
            return;
        }
        if (!resumed_) {
            abandoned_ = true;
            resume();
        }
        if (resumed_) {
            WaitForSingleObject(handle_, INFINITE);
        } else {
            // It holds nothing, as it has not run yet; waiting for it would never end.
            TerminateThread(handle_, 0);
        }
        CloseHandle(handle_);
    }

    [[nodiscard]] bool exists() const { return handle_ != nullptr; }

    bool setPriority(std::int32_t priority) override { return SetThreadPriority(handle_, priority) != 0; }

    bool setGroupAffinity(std::uint16_t group, std::uint64_t mask) override {
        GROUP_AFFINITY affinity{};
        affinity.Group = group;
        affinity.Mask = mask;
        return SetThreadGroupAffinity(handle_, &affinity, nullptr) != 0;
    }

    bool setAffinityMask(std::uint64_t mask) override { return SetThreadAffinityMask(handle_, mask) != 0; }

    bool resume() override {
        resumed_ = ResumeThread(handle_) != static_cast<DWORD>(-1);
        return resumed_;
    }

    bool wait() override { return WaitForSingleObject(handle_, INFINITE) == WAIT_OBJECT_0; }

    std::optional<std::uint32_t> exitCode() override {
        DWORD code = 0;
        return GetExitCodeThread(handle_, &code) != 0 ? std::optional<std::uint32_t>(code) : std::nullopt;
    }

private:
    static DWORD WINAPI run(void* thread) {
        auto& self = *static_cast<Thread*>(thread);
        return self.abandoned_ ? 0 : self.routine_();
    }

    Routine routine_;
    bool abandoned_ = false;
    bool resumed_ = false;
    HANDLE handle_;
};

} // namespace

std::unique_ptr<SuspendedThread> createSuspendedThread(SuspendedThread::Routine routine) {
    auto thread = std::make_unique<Thread>(std::move(routine));
    return thread->exists() ? std::move(thread) : nullptr;
}

} // namespace vexil::platform
