#include "platform/thread_affinity.h"

#include <windows.h>

namespace vexil::platform {

void setThreadAffinityMask(std::uint64_t mask) { SetThreadAffinityMask(GetCurrentThread(), mask); }

} // namespace vexil::platform
