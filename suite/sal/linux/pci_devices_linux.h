#pragma once

#include "device_source.h"

#include <filesystem>

namespace vexil::sal {

/// PCI devices out of a folder in the form of /sys/bus/pci/devices, with names out of a PCI id database.
class PciDeviceSource final : public DeviceSource {
public:
    PciDeviceSource(std::filesystem::path devices, std::filesystem::path idDatabase)
        : devices_(std::move(devices)), idDatabase_(std::move(idDatabase)) {}

    std::vector<SystemDevice> list(const WinDeviceScanFilter& filter) override;

private:
    std::filesystem::path devices_;
    std::filesystem::path idDatabase_;
};

} // namespace vexil::sal
