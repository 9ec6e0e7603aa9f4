#pragma once

#include "platform/linux/pci_address.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vexil::platform {

/// One card that the kernel's amdgpu driver runs, by its folder in sysfs. A value that the card does not
/// tell, or does not tell now, is nothing.
struct AmdgpuCard {
    PciAddress address;
    std::filesystem::path folder;

    [[nodiscard]] bool isPresent() const;
    /// The number that the PCI configuration holds, such as 0x73DF.
    [[nodiscard]] std::optional<std::uint32_t> deviceId() const;
    /// Of the sensor at the die's edge, which every card has; in thousandths of a degree Celsius.
    [[nodiscard]] std::optional<std::int32_t> millidegrees() const;
    [[nodiscard]] std::optional<std::uint64_t> memoryBytes() const;
    [[nodiscard]] std::optional<std::uint64_t> usedBytes() const;
};

/// The cards that amdgpu runs, in the order of their PCI addresses; none without such a driver.
[[nodiscard]] std::vector<AmdgpuCard> listAmdgpuCards(const std::filesystem::path& root);

} // namespace vexil::platform
