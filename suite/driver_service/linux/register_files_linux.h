#pragma once

#include "driver_service_base.h"

#include <filesystem>

namespace vexil::driver_service {

/// Registers through the files in which the kernel shows them to root: /dev/cpu/N/msr, which the kernel
/// module "msr" provides, and /sys/bus/pci/devices/ADDRESS/config. Without the rights to either it is not
/// ready.
class RegisterFiles final : public DriverServiceBase {
public:
    /// Folders in the form of /dev and /sys.
    RegisterFiles(std::filesystem::path deviceRoot, std::filesystem::path sysRoot)
        : deviceRoot_(std::move(deviceRoot)), sysRoot_(std::move(sysRoot)) {}

    std::int32_t isReady() override;
    /// 1, 2 or 4 bytes, on domain 0.
    std::int32_t readPciConfig(const PciConfigRequest& request, std::uint32_t* result) override;
    std::int32_t writePciConfig(const PciConfigRequest& request) override;
    /// Of the processor that the calling thread runs on.
    std::int32_t readMsr(std::uint32_t reg, std::uint64_t* result) override;

private:
    [[nodiscard]] std::filesystem::path msrFile(int processor) const;
    [[nodiscard]] std::filesystem::path configFile(const PciConfigRequest& request) const;

    std::filesystem::path deviceRoot_;
    std::filesystem::path sysRoot_;
};

} // namespace vexil::driver_service
