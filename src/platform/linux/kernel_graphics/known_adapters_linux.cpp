#include "platform/linux/kernel_graphics/known_adapters.h"

#include <algorithm>

namespace vexil::platform {

std::optional<d3dkmt::Luid> KnownAdapters::find(const PciAddress& address) const {
    const auto found = std::ranges::find(adapters_, address, &AdapterLuid::address);
    return found == adapters_.end() ? std::nullopt : std::optional(found->luid);
}

std::optional<d3dkmt::Luid> KnownAdapters::luidOf(const PciAddress& address) {
    if (const auto known = find(address)) {
        return known;
    }
    if (listedAt_ && clock_() - *listedAt_ < moment) {
        return std::nullopt;
    }
    adapters_ = list_();
    // The listing itself may take a while.
    listedAt_ = clock_();
    return find(address);
}

} // namespace vexil::platform
