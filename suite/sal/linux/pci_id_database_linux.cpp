#include "pci_id_database_linux.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <system_error>

namespace vexil::sal {

namespace {

std::string fourDigits(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof(text), "%04x", number);
    return text;
}

/// The name behind an entry "10de  NVIDIA Corporation", if the line is that entry.
bool readName(const std::string& line, std::size_t indent, const std::string& id, std::string& name) {
    if (line.compare(indent, id.size() + 2, id + "  ") != 0) {
        return false;
    }
    name = line.substr(indent + id.size() + 2);
    return true;
}

} // namespace

PciNames lookUpPciNames(const std::filesystem::path& database, std::uint32_t vendor, std::uint32_t device) {
    const auto vendorId = fourDigits(vendor);
    const auto deviceId = fourDigits(device);
    PciNames names;
    std::ifstream stream(database);
    for (std::string line; std::getline(stream, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (names.vendor.empty()) {
            readName(line, 0, vendorId, names.vendor);
            continue;
        }
        // Devices stand below their vendor behind one tabulator, subsystems behind two.
        if (line.front() != '\t' ||
            (line.size() > 1 && line[1] != '\t' && readName(line, 1, deviceId, names.device))) {
            break;
        }
    }
    return names;
}

std::filesystem::path findPciIdDatabase() {
    static constexpr std::array files = {"/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids",
                                         "/usr/share/pci.ids"};
    std::error_code error;
    for (const char* file : files) {
        if (std::filesystem::exists(file, error)) {
            return file;
        }
    }
    return {};
}

} // namespace vexil::sal
