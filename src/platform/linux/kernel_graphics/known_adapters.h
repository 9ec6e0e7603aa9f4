#pragma once

#include "platform/linux/kernel_graphics/adapter_luids.h"

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace vexil::platform {

/// The adapters of the last time that Direct3D was asked for them, which takes long. It is asked anew for an
/// address that it did not know, but not again within a moment: a scan opens each of its cards several times.
class KnownAdapters {
public:
    using List = std::function<std::vector<AdapterLuid>()>;
    using Time = std::chrono::steady_clock::time_point;
    using Clock = std::function<Time()>;

    static constexpr std::chrono::seconds moment{5};

    explicit KnownAdapters(List list = listAdapterLuids, Clock clock = std::chrono::steady_clock::now)
        : list_(std::move(list)), clock_(std::move(clock)) {}

    [[nodiscard]] std::optional<d3dkmt::Luid> luidOf(const PciAddress& address);

private:
    [[nodiscard]] std::optional<d3dkmt::Luid> find(const PciAddress& address) const;

    List list_;
    Clock clock_;
    std::vector<AdapterLuid> adapters_;
    std::optional<Time> listedAt_;
};

} // namespace vexil::platform
