#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace vexil::platform {

/// What a client of a graphics driver has used of one kind of engine. Drivers tell either the time, or cycles
/// beside those that passed altogether.
struct EngineUse {
    std::uint64_t nanoseconds = 0;
    std::uint64_t cycles = 0;
    std::uint64_t totalCycles = 0;
    std::uint64_t capacity = 1; ///< engines of this kind
};

/// One open file of a graphics driver, as /proc/PID/fdinfo describes it.
struct DrmFdInfo {
    std::string driver;
    std::string pciAddress;     ///< "0000:0a:00.0"
    std::uint64_t clientId = 0; ///< files that share it share their counters
    std::map<std::string, EngineUse, std::less<>> engines;
};

/// Nothing for a file of another kind. Lines that cannot be read are left out.
[[nodiscard]] std::optional<DrmFdInfo> parseDrmFdInfo(std::string_view text);

} // namespace vexil::platform
