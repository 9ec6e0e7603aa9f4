#include "platform/linux/pci_ids.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <system_error>

namespace vexil::platform {

namespace {

/// Debian's place, then those of the other families.
constexpr std::array databases = {"usr/share/misc/pci.ids", "usr/share/hwdata/pci.ids", "usr/share/pci.ids"};

struct KnownVendor {
    std::uint32_t id;
    const char* name;
};
/// As the database spells them.
constexpr std::array<KnownVendor, 3> knownVendors = {{
    {0x10DE, "NVIDIA Corporation"},
    {0x1002, "Advanced Micro Devices, Inc. [AMD/ATI]"},
    {0x8086, "Intel Corporation"},
}};

/// The key of a line, four digits and two blanks.
std::string key(std::uint32_t id) {
    char text[16];
    std::snprintf(text, sizeof text, "%04x  ", id);
    return text;
}

/// Vendors begin their lines, each followed by its devices behind one tab, and theirs by variants behind two.
PciNames lookUp(std::istream& database, std::uint32_t vendor, std::uint32_t device) {
    PciNames names;
    const auto vendorKey = key(vendor);
    const auto deviceKey = "\t" + key(device);
    for (std::string line; std::getline(database, line);) {
        if (names.vendor.empty()) {
            if (line.starts_with(vendorKey)) {
                names.vendor = line.substr(vendorKey.size());
            }
        } else if (line.starts_with(deviceKey)) {
            names.device = line.substr(deviceKey.size());
            break;
        } else if (!line.empty() && line.front() != '\t' && line.front() != '#') {
            break;
        }
    }
    return names;
}

} // namespace

std::filesystem::path findPciIdDatabase(const std::filesystem::path& root) {
    std::error_code error;
    for (const char* path : databases) {
        if (std::filesystem::exists(root / path, error)) {
            return root / path;
        }
    }
    return {};
}

PciNames lookUpPciNames(const std::filesystem::path& database, std::uint32_t vendor, std::uint32_t device) {
    std::ifstream stream(database);
    auto names = lookUp(stream, vendor, device);
    for (const auto& known : knownVendors) {
        if (names.vendor.empty() && known.id == vendor) {
            names.vendor = known.name;
        }
    }
    return names;
}

} // namespace vexil::platform
