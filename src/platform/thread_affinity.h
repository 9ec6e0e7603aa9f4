#pragma once

#include <cstdint>

namespace vexil::platform {

/// Pins the calling thread to the processors of the mask, where the platform can do that for one thread
/// alone. A failure is ignored.
void setThreadAffinityMask(std::uint64_t mask);

} // namespace vexil::platform
