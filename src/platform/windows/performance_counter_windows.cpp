#include "platform/performance_counter.h"

#include <windows.h>

namespace vexil::platform {

std::int64_t performanceCounter() {
    LARGE_INTEGER value{};
    QueryPerformanceCounter(&value);
    return value.QuadPart;
}

std::int64_t performanceCounterFrequency() {
    LARGE_INTEGER value{};
    QueryPerformanceFrequency(&value);
    return value.QuadPart;
}

} // namespace vexil::platform
