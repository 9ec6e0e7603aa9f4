#pragma once

#include <cstdint>
#include <mutex>

namespace vexil::core {

/// Events of the machine (sleep, session change, ...) that the host collects while a test runs.
/// The layout, word first and mutex behind it, is shared with the host.
struct SystemEventState {
    std::uint32_t flags = 0;
    mutable std::mutex mutex;

    /// A copy of the flag word, taken under the mutex.
    [[nodiscard]] std::uint32_t read() const {
        const std::lock_guard lock(mutex);
        return flags;
    }
};

/// The events that can spoil a test's outcome: bits 0, 1, 3, 5, 6 and 7. Bits 2 and 4 stop no test.
inline constexpr std::uint32_t compromisingSystemEvents = 0xEB;

} // namespace vexil::core
