#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace vexil::sal {

struct PciNames {
    std::string vendor; ///< empty if the database does not know it
    std::string device; ///< likewise
};

/// Looks a device up in a PCI id database (the file "pci.ids"). Empty names if there is no such file.
[[nodiscard]] PciNames lookUpPciNames(const std::filesystem::path& database, std::uint32_t vendor,
                                      std::uint32_t device);

/// Where the distributions keep the database; an empty path if none does.
[[nodiscard]] std::filesystem::path findPciIdDatabase();

} // namespace vexil::sal
