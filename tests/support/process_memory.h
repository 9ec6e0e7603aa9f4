#pragma once

#include <fstream>
#include <string>

namespace vexil::tests {

/// Memory of this process that is really there, in KiB. Linux only.
inline long residentKibibytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            long kibibytes = 0;
            status >> kibibytes;
            return kibibytes;
        }
    }
    return 0;
}

} // namespace vexil::tests
