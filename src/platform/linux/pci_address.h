#pragma once

#include <compare>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace vexil::platform {

/// The place of a function in PCI.
struct PciAddress {
    std::uint32_t domain = 0;
    std::uint32_t bus = 0;
    std::uint32_t device = 0;
    std::uint32_t function = 0;

    friend auto operator<=>(const PciAddress&, const PciAddress&) = default;
};

/// Out of the form that the kernel gives it, "0000:0a:00.0"; nothing for another text.
[[nodiscard]] inline std::optional<PciAddress> parsePciAddress(const std::string& text) {
    PciAddress address;
    char rest = '\0';
    const int read = std::sscanf(text.c_str(), "%x:%x:%x.%x%c", &address.domain, &address.bus,
                                 &address.device, &address.function, &rest);
    return read == 4 ? std::optional(address) : std::nullopt;
}

} // namespace vexil::platform
