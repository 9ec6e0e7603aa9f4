#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vexil::module::video_card {

/// One display controller as the system lists it.
struct AdapterRecord {
    std::string name;
    std::string manufacturer;
    std::string vendorId; ///< four hexadecimal digits, as the hardware id has them
    std::string deviceId; ///< likewise
    std::string reservedText;
    std::string driverVersion; ///< may be empty
    std::uint32_t reservedFlag = 1;
    std::uint64_t reservedNumber = 0;
    std::string location; ///< "bb:dd.f", lower-case hexadecimal: what joins all the interfaces of a machine
    std::vector<std::uint64_t> adapterLuids; ///< one for each device path, high word in the upper half
    std::vector<std::string> devicePaths;
};

} // namespace vexil::module::video_card
