#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace vexil::platform {

struct PciNames {
    std::string vendor; ///< "NVIDIA Corporation"; empty if unknown
    std::string device; ///< "GP106 [GeForce GTX 1060 6GB]"; empty if unknown
};

/// Where the distributions keep the PCI id database (the file "pci.ids") below `root`, "/" on a real machine;
/// an empty path if none does.
[[nodiscard]] std::filesystem::path findPciIdDatabase(const std::filesystem::path& root);

/// The names in that database. Without one only the three makers of video cards that this system tells apart
/// have a name. The system device list and the driver objects both take a maker's name from here, since a
/// driver is found by it.
[[nodiscard]] PciNames lookUpPciNames(const std::filesystem::path& database, std::uint32_t vendor,
                                      std::uint32_t device);

} // namespace vexil::platform
