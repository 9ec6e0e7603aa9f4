#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace vexil::platform {

struct PciNames {
    std::string vendor; ///< "NVIDIA Corporation"; empty if unknown
    std::string device; ///< "GP106 [GeForce GTX 1060 6GB]"; empty if unknown
};

/// The names in the machine's PCI id database, which stands below `root` ("/" on a real machine). Without one
/// only the three makers of video cards that this system tells apart have a name.
[[nodiscard]] PciNames pciNames(const std::filesystem::path& root, std::uint32_t vendor,
                                std::uint32_t device);

} // namespace vexil::platform
