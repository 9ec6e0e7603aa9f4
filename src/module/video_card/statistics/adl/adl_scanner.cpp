#include "module/video_card/statistics/adl/adl_scanner.h"

#include "module/video_card/statistics/adl/adl_adapters.h"
#include "module/video_card/statistics/adl/adl_device_statistics.h"

#include <memory>

namespace vexil::module::video_card {

namespace adl = platform::adl;

namespace {

/// Null for a generation that there is no class for.
std::unique_ptr<VideoCardStatistics> makeSource(std::int32_t version, const adl::AdapterInfo& adapter,
                                                ADLContexts& contexts) {
    switch (version) {
    case 5:
        return std::make_unique<ADLOD5DeviceStatistics>(adapter.iAdapterIndex, adlLocation(adapter),
                                                        contexts);
    case 6:
        return std::make_unique<ADLOD6DeviceStatistics>(adapter.iAdapterIndex, adlLocation(adapter),
                                                        contexts);
    case 7:
        return std::make_unique<ADLDNDeviceStatistics>(adapter.iAdapterIndex, adlLocation(adapter), contexts);
    default:
        return nullptr;
    }
}

} // namespace

StatisticsSources& ADLDeviceStatisticsScanner::scan(StatisticsSources& sources) {
    const auto context = contexts_.get();
    if (!context) {
        return sources;
    }
    const auto set = listActiveAdapters(*context);
    for (const auto& adapter : set.adapters()) {
        std::int32_t supported = 0;
        std::int32_t enabled = 0;
        std::int32_t version = 0;
        const auto status =
            context->overdriveCaps(nullptr, adapter.iAdapterIndex, &supported, &enabled, &version);
        // A failed call that left "supported" at zero goes on, and its version decides.
        if (status != adl::ok && supported != 0) {
            continue;
        }
        if (auto source = makeSource(version, adapter, contexts_)) {
            sources.push_back(std::move(source));
        }
    }
    return sources;
}

} // namespace vexil::module::video_card
