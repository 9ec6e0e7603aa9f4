#include "module/cpu/pinned_reading.h"

namespace vexil::module::cpu {

std::int32_t runPinned(const LogicalProcessor& processor, const std::function<std::int32_t()>& routine,
                       const ThreadMaker& makeThread) {
    if (!routine) {
        return PinnedRunStatus::NoRoutine;
    }
    // The status travels as the thread's exit code.
    const auto thread = makeThread([&routine] { return static_cast<std::uint32_t>(routine()); });
    if (!thread) {
        return PinnedRunStatus::ThreadNotCreated;
    }
    const auto mask = std::uint64_t{1} << processor.number % platform::processorsOfGroup;
    if (!thread->setPriority(platform::idlePriority)) {
        return PinnedRunStatus::PriorityNotSet;
    }
    if (!thread->setGroupAffinity(processor.group, mask)) {
        return PinnedRunStatus::GroupAffinityNotSet;
    }
    if (!thread->setAffinityMask(mask)) {
        return PinnedRunStatus::AffinityMaskNotSet;
    }
    if (!thread->resume()) {
        return PinnedRunStatus::NotResumed;
    }
    if (!thread->wait()) {
        return PinnedRunStatus::NotWaitedFor;
    }
    const auto code = thread->exitCode();
    return code ? static_cast<std::int32_t>(*code) : PinnedRunStatus::NoExitCode;
}

} // namespace vexil::module::cpu
