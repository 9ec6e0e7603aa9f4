#pragma once

#include <cstdint>

// The counter that short times are measured with, and in whose time base the kernel-mode graphics statistics
// are read. Its unit is the platform's.
namespace vexil::platform {

[[nodiscard]] std::int64_t performanceCounter();
/// Counts in a second; the same for the whole life of the process.
[[nodiscard]] std::int64_t performanceCounterFrequency();

} // namespace vexil::platform
