#include "platform/linux/cim/machine_objects.h"

#include "platform/linux/pci_address.h"
#include "platform/linux/pci_ids.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <system_error>

namespace vexil::platform {

namespace {

namespace fs = std::filesystem;

struct DisplayController {
    std::string address; ///< "0000:01:00.0"
    std::uint32_t vendor = 0;
    std::uint32_t device = 0;
    std::uint32_t subsystem = 0; ///< the card maker's device and vendor id, as in a hardware id
    std::uint32_t revision = 0;
    std::string driver; ///< empty if none is bound
    std::string driverVersion;
};

/// A number as sysfs writes it, "0x10de".
std::optional<std::uint32_t> hexadecimal(const std::string& text) {
    std::uint32_t value = 0;
    if (!text.starts_with("0x")) {
        return std::nullopt;
    }
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data() + 2, end, value, 16);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

std::vector<DisplayController> displayControllers(const fs::path& root) {
    std::vector<DisplayController> controllers;
    std::error_code error;
    for (fs::directory_iterator entry(root / "sys/bus/pci/devices", error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path folder = entry->path();
        const auto read = [&](const char* file) { return hexadecimal(readSystemText(folder / file)); };
        const auto classCode = read("class");
        const auto vendor = read("vendor");
        const auto device = read("device");
        constexpr std::uint32_t displayClass = 3;
        if (!classCode || *classCode >> 16 != displayClass || !vendor || !device) {
            continue;
        }
        DisplayController controller;
        controller.address = folder.filename().string();
        controller.vendor = *vendor;
        controller.device = *device;
        controller.subsystem =
            read("subsystem_device").value_or(0) << 16 | read("subsystem_vendor").value_or(0);
        controller.revision = read("revision").value_or(0);
        std::error_code unbound;
        controller.driver = fs::read_symlink(folder / "driver", unbound).filename().string();
        if (!controller.driver.empty()) {
            controller.driverVersion = readSystemText(folder / "driver/module/version");
            if (controller.driverVersion.empty()) {
                controller.driverVersion = readSystemText(root / "proc/sys/kernel/osrelease");
            }
        }
        controllers.push_back(std::move(controller));
    }
    std::sort(controllers.begin(), controllers.end(),
              [](const auto& a, const auto& b) { return a.address < b.address; });
    return controllers;
}

template <typename... Arguments>
std::string formatted(const char* format, Arguments... arguments) {
    char text[80];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

std::string hardwareId(const DisplayController& controller) {
    return formatted("PCI\\VEN_%04X&DEV_%04X&SUBSYS_%08X&REV_%02X", controller.vendor, controller.device,
                     controller.subsystem, controller.revision);
}

/// "PCI bus 1, device 0, function 0"; empty for an address that is none.
system::CimValue location(const DisplayController& controller) {
    const auto pci = parsePciAddress(controller.address);
    return pci ? system::CimValue(
                     formatted("PCI bus %u, device %u, function %u", pci->bus, pci->device, pci->function))
               : system::CimValue();
}

system::CimValue textOrEmpty(const std::string& text) {
    return text.empty() ? system::CimValue() : system::CimValue(text);
}

} // namespace

std::vector<CimObject> displayDriverObjects(const fs::path& root) {
    const auto database = findPciIdDatabase(root);
    std::vector<CimObject> objects;
    for (const auto& controller : displayControllers(root)) {
        if (controller.driver.empty()) {
            continue;
        }
        const auto names = lookUpPciNames(database, controller.vendor, controller.device);
        objects.push_back({
            {"DeviceClass", std::string("DISPLAY")},
            {"DeviceID", hardwareId(controller)},
            {"DeviceName", textOrEmpty(names.device)},
            {"DriverName", controller.driver},
            {"DriverProviderName", textOrEmpty(names.vendor)},
            {"DriverVersion", textOrEmpty(controller.driverVersion)},
            {"HardWareID", hardwareId(controller)},
            {"Location", location(controller)},
            {"Manufacturer", textOrEmpty(names.vendor)},
        });
    }
    return objects;
}

std::vector<CimObject> videoControllerObjects(const fs::path& root) {
    const auto database = findPciIdDatabase(root);
    std::vector<CimObject> objects;
    for (const auto& controller : displayControllers(root)) {
        const auto names = lookUpPciNames(database, controller.vendor, controller.device);
        objects.push_back({
            {"AdapterCompatibility", textOrEmpty(names.vendor)},
            {"Caption", textOrEmpty(names.device)},
            {"DeviceID", "VideoController" + std::to_string(objects.size() + 1)},
            {"DriverVersion", textOrEmpty(controller.driverVersion)},
            {"Name", textOrEmpty(names.device)},
            {"PNPDeviceID", hardwareId(controller)},
        });
    }
    return objects;
}

} // namespace vexil::platform
