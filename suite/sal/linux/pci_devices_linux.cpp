#include "pci_devices_linux.h"

#include "platform/linux/pci_address.h"
#include "platform/linux/pci_ids.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>

namespace vexil::sal {

namespace {

namespace fs = std::filesystem;

struct PciDevice {
    platform::PciAddress address;
    unsigned vendorId = 0;
    unsigned deviceId = 0;
    unsigned subsystemVendorId = 0;
    unsigned subsystemId = 0;
    unsigned revision = 0;
    unsigned classCode = 0; ///< 24 bits: class, subclass, programming interface
};

template <typename... Values>
std::string format(const char* pattern, Values... values) {
    char text[128];
    std::snprintf(text, sizeof(text), pattern, values...);
    return text;
}

std::optional<unsigned> readHexadecimal(const fs::path& file) {
    std::ifstream stream(file);
    unsigned value = 0;
    return stream >> std::hex >> value ? std::optional(value) : std::nullopt;
}

std::optional<PciDevice> readDevice(const fs::path& folder) {
    const auto address = platform::parsePciAddress(folder.filename().string());
    const auto vendor = readHexadecimal(folder / "vendor");
    const auto device = readHexadecimal(folder / "device");
    const auto classCode = readHexadecimal(folder / "class");
    if (!address || !vendor || !device || !classCode) {
        return std::nullopt;
    }
    PciDevice pci;
    pci.address = *address;
    pci.vendorId = *vendor;
    pci.deviceId = *device;
    pci.classCode = *classCode;
    pci.subsystemVendorId = readHexadecimal(folder / "subsystem_vendor").value_or(0);
    pci.subsystemId = readHexadecimal(folder / "subsystem_device").value_or(0);
    pci.revision = readHexadecimal(folder / "revision").value_or(0);
    return pci;
}

/// The ids that Windows makes for a PCI device, most exact first.
std::vector<std::string> hardwareIds(const PciDevice& pci) {
    const auto ids = format("PCI\\VEN_%04X&DEV_%04X", pci.vendorId, pci.deviceId);
    const auto subsystem = format("&SUBSYS_%04X%04X", pci.subsystemId, pci.subsystemVendorId);
    return {ids + subsystem + format("&REV_%02X", pci.revision), ids + subsystem,
            ids + format("&CC_%06X", pci.classCode), ids + format("&CC_%04X", pci.classCode >> 8)};
}

std::vector<std::string> compatibleIds(const PciDevice& pci) {
    const auto vendor = format("PCI\\VEN_%04X", pci.vendorId);
    return {vendor + format("&DEV_%04X&REV_%02X", pci.deviceId, pci.revision),
            vendor + format("&DEV_%04X", pci.deviceId),
            vendor + format("&CC_%06X", pci.classCode),
            vendor + format("&CC_%04X", pci.classCode >> 8),
            vendor,
            format("PCI\\CC_%06X", pci.classCode),
            format("PCI\\CC_%04X", pci.classCode >> 8)};
}

/// The name for people, which the database puts in brackets behind that of the chip.
std::string tradeName(const std::string& name) {
    const auto open = name.rfind('[');
    return open != std::string::npos && name.ends_with(']') ? name.substr(open + 1, name.size() - open - 2)
                                                            : name;
}

/// A display controller with a kernel driver for graphics behind it.
bool hasDisplayInterface(const fs::path& folder, const PciDevice& pci) {
    std::error_code error;
    return pci.classCode >> 16 == 3 && fs::exists(folder / "drm", error);
}

} // namespace

std::vector<SystemDevice> PciDeviceSource::list(const WinDeviceScanFilter& filter) {
    std::error_code error;
    std::vector<fs::path> folders;
    for (const auto& entry : fs::directory_iterator(devices_, error)) {
        folders.push_back(entry.path());
    }
    // A machine without PCI has no such folder, and no devices; that is an answer.
    std::ranges::sort(folders);

    std::vector<SystemDevice> devices;
    for (const auto& folder : folders) {
        const auto pci = readDevice(folder);
        if (!pci || (asksForInterface(filter) && !hasDisplayInterface(folder, *pci))) {
            continue;
        }
        const auto names = platform::lookUpPciNames(idDatabase_, pci->vendorId, pci->deviceId);
        SystemDevice device;
        device.manufacturer = names.vendor;
        device.description = tradeName(names.device);
        device.hardwareIds = hardwareIds(*pci);
        device.compatibleIds = compatibleIds(*pci);
        device.locationInformation = format("PCI bus %u, device %u, function %u", pci->address.bus,
                                            pci->address.device, pci->address.function);
        if (asksForInterface(filter)) {
            device.interfacePaths = {folder.string()};
        }
        devices.push_back(std::move(device));
    }
    return devices;
}

std::unique_ptr<DeviceSource> makeSystemDeviceSource() {
    return std::make_unique<PciDeviceSource>("/sys/bus/pci/devices", platform::findPciIdDatabase("/"));
}

} // namespace vexil::sal
