#pragma once

#include "module/cpu/abstract_cpu_temperature.h"
#include "platform/suspended_thread.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace vexil::module::cpu {

/// What a pinned run answers when it did not come to its routine's own status. The numbers are the suite's.
struct PinnedRunStatus {
    static constexpr std::int32_t NoRoutine = 1;
    static constexpr std::int32_t AffinityMaskNotSet = 4;
    static constexpr std::int32_t GroupAffinityNotSet = 13;
    static constexpr std::int32_t ThreadNotCreated = 15;
    static constexpr std::int32_t PriorityNotSet = 16;
    static constexpr std::int32_t NotResumed = 17;
    static constexpr std::int32_t NotWaitedFor = 18;
    static constexpr std::int32_t NoExitCode = 19;

    PinnedRunStatus() = delete;
};

using ThreadMaker =
    std::function<std::unique_ptr<platform::SuspendedThread>(platform::SuspendedThread::Routine)>;

/// Runs `routine` to its end on that logical processor, on a new thread of idle priority, and answers its
/// status.
[[nodiscard]] std::int32_t runPinned(const LogicalProcessor& processor,
                                     const std::function<std::int32_t()>& routine,
                                     const ThreadMaker& makeThread);

} // namespace vexil::module::cpu
