#pragma once

#include "platform/kernel_graphics.h"
#include "platform/linux/pci_address.h"

#include <optional>
#include <string>
#include <vector>

namespace vexil::platform {

/// The address that a device path ends with, as in "/sys/bus/pci/devices/0000:0a:00.0".
[[nodiscard]] std::optional<PciAddress> pciAddressOfPath(const std::string& devicePath);

struct AdapterLuid {
    PciAddress address;
    d3dkmt::Luid luid;
};

/// The LUID under which Direct3D knows each adapter that has a PCI address. Empty where there is no Direct3D;
/// a renderer on the processor has no address and is left out.
[[nodiscard]] std::vector<AdapterLuid> listAdapterLuids();

} // namespace vexil::platform
