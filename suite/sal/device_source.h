#pragma once

#include "core/sal.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::sal {

/// One device with the properties that the list can be asked for, in the form in which Windows writes them.
struct SystemDevice {
    std::string description;
    std::vector<std::string> hardwareIds;   ///< most exact first: "PCI\VEN_10DE&DEV_1C03&SUBSYS_..."
    std::vector<std::string> compatibleIds; ///< "PCI\CC_030000" among them
    std::string manufacturer;
    std::string locationInformation; ///< "PCI bus 10, device 0, function 0"
    std::vector<std::string> interfacePaths;
};

/// Where the device list comes from.
class DeviceSource {
public:
    virtual ~DeviceSource() = default;
    /// The devices that the filter lets through; paths only where it names a device interface. Throws
    /// `std::runtime_error` if the system does not answer.
    virtual std::vector<SystemDevice> list(const WinDeviceScanFilter& filter) = 0;
};

/// The operating system's own list.
[[nodiscard]] std::unique_ptr<DeviceSource> makeSystemDeviceSource();

/// The display controllers of the scenario that this process runs in.
[[nodiscard]] std::unique_ptr<DeviceSource> makeScenarioDeviceSource(const std::string& file);

/// True if the filter asks for devices with an interface only.
[[nodiscard]] bool asksForInterface(const WinDeviceScanFilter& filter);

} // namespace vexil::sal
