#pragma once

#ifdef _WIN32
#include <windows.h>

#include <psapi.h>
#else
#include <fstream>
#include <string>
#endif

namespace vexil::tests {

/// Memory of this process that is really there, in KiB.
inline long residentKibibytes() {
#ifdef _WIN32
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    return K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters) == FALSE
               ? 0
               : static_cast<long>(counters.WorkingSetSize / 1024);
#else
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            long kibibytes = 0;
            status >> kibibytes;
            return kibibytes;
        }
    }
    return 0;
#endif
}

} // namespace vexil::tests
