#include "module/video_card/statistics/nvapi/nvapi_scanner.h"

#include "module/video_card/statistics/nvapi/nvapi_device_statistics.h"

#include <algorithm>
#include <memory>
#include <string>

namespace vexil::module::video_card {

namespace nvapi = platform::nvapi;

StatisticsSources& NvapiDeviceStatisticsScanner::scan(StatisticsSources& sources) {
    std::array<nvapi::GpuHandle, nvapi::maxGpus> gpus{};
    std::uint32_t count = 0;
    if (runtime_.access.enumPhysicalGpus(gpus, count) != nvapi::ok) {
        return sources;
    }
    // A count beyond the array names no GPU.
    const auto listed = std::min<std::size_t>(count, gpus.size());
    for (std::size_t index = 0; index < listed; ++index) {
        std::uint32_t bus = 0;
        std::uint32_t slot = 0;
        const auto busStatus = runtime_.access.getBusId(gpus[index], bus);
        const auto slotStatus = runtime_.access.getBusSlotId(gpus[index], slot);
        if (busStatus != nvapi::ok || slotStatus != nvapi::ok) {
            continue;
        }
        try {
            sources.push_back(
                std::make_unique<NvapiDeviceStatistics>(gpus[index], nvapiLocation(bus, slot), runtime_));
        } catch (int) {
            // This GPU has no source.
        } catch (const std::string&) {
            // Nor has this one.
        }
    }
    return sources;
}

} // namespace vexil::module::video_card
