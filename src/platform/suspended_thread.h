#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace vexil::platform {

/// The lowest priority on the scale of Windows.
inline constexpr std::int32_t idlePriority = -15;
/// Windows numbers processors in groups of as many.
inline constexpr unsigned processorsOfGroup = 64;

/// A thread that does not run before `resume`, so that it can be placed on a processor first. Every step
/// answers whether the system took it. Destroying a thread that was never resumed ends it without running
/// its routine; one that runs is waited for.
class SuspendedThread {
public:
    using Routine = std::function<std::uint32_t()>;

    virtual ~SuspendedThread() = default;
    /// On the scale of Windows. Elsewhere only `idlePriority` can be told from the others.
    virtual bool setPriority(std::int32_t priority) = 0;
    /// `group` counts sets of `processorsOfGroup`, `mask` those of one group.
    virtual bool setGroupAffinity(std::uint16_t group, std::uint64_t mask) = 0;
    /// Within the thread's group.
    virtual bool setAffinityMask(std::uint64_t mask) = 0;
    virtual bool resume() = 0;
    /// Waits without limit.
    virtual bool wait() = 0;
    /// What the routine returned.
    virtual std::optional<std::uint32_t> exitCode() = 0;
};

/// Null if the system makes no thread.
[[nodiscard]] std::unique_ptr<SuspendedThread> createSuspendedThread(SuspendedThread::Routine routine);

} // namespace vexil::platform
