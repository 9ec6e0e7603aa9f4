#include "platform/thread_affinity.h"

namespace vexil::platform {

// On Linux a thread hands its affinity on to the threads it makes, so pinning a worker would pin the graphics
// driver's own threads with it. The mask is counted all the same, and left unused.
void setThreadAffinityMask(std::uint64_t) {}

} // namespace vexil::platform
