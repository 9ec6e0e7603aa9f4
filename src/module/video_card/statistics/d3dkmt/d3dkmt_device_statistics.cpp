#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"

#include "platform/library_names.h"
#include "platform/wide_text.h"
#include "system/win_module.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <utility>

namespace vexil::module::video_card {

namespace d3dkmt = platform::d3dkmt;

namespace {

constexpr std::uint32_t systemSearch = 1;
constexpr auto firstWindow = std::chrono::milliseconds(100);

/// Far above what any driver counts; a larger number is nonsense, and would take memory without bound.
constexpr std::uint32_t mostNodes = 65'536;

/// Held across the wait of a first query, so that one delays the queries of all cards.
std::mutex samplingMutex;

/// Read when the process makes its first node sample; 0 until then.
std::int64_t counterFrequency = 0;

void* const invalidLibrary = reinterpret_cast<void*>(~std::uintptr_t{0});

d3dkmt::QueryStatistics clearedQuery(d3dkmt::QueryStatisticsType type, const d3dkmt::Luid& luid) {
    d3dkmt::QueryStatistics query;
    std::memset(&query, 0, sizeof(query));
    query.type = type;
    query.adapterLuid = luid;
    return query;
}

} // namespace

D3DKMTDeviceStatistics::D3DKMTDeviceStatistics(const AdapterRecord& adapter, ::Module& loader,
                                               SampleClock& clock)
    : loader_(loader), clock_(clock), gdi32_(loader.load(platform::kernelGraphicsLibrary(), systemSearch)),
      paths_(adapter.devicePaths) {
    for (const auto& path : paths_) {
        try {
            openAdapter(path);
        } catch (...) {
            // A path that does not open says nothing about the others.
        }
    }
    location_ = adapter.location;
    if (adapters_.empty()) {
        throw std::runtime_error("Could not get adapter(s) from path(s)");
    }
    for (auto& opened : adapters_) {
        countNodes(opened);
    }
}

void D3DKMTDeviceStatistics::openAdapter(const std::string& path) {
    if (gdi32_ == invalidLibrary) {
        throw std::runtime_error("Could not find gdi32.dll");
    }
    auto name = std::make_unique<const std::wstring>(platform::toWide(path));
    const auto open = reinterpret_cast<d3dkmt::OpenAdapterFromDeviceNameFunction>(
        loader_.resolve(gdi32_, "D3DKMTOpenAdapterFromDeviceName"));
    d3dkmt::OpenAdapterFromDeviceName request{name->c_str(), 0, {}};
    if (open == nullptr || open(&request) != d3dkmt::success) {
        throw std::runtime_error("Could not find OpenAdapterFromDeviceName");
    }
    adapters_.push_back({request, {}, std::move(name)});
}

d3dkmt::QueryStatisticsFunction D3DKMTDeviceStatistics::queryFunction() {
    return reinterpret_cast<d3dkmt::QueryStatisticsFunction>(
        loader_.resolve(gdi32_, "D3DKMTQueryStatistics"));
}

void D3DKMTDeviceStatistics::countNodes(D3DKMTAdapter& adapter) {
    const auto query = queryFunction();
    auto request = clearedQuery(d3dkmt::QueryStatisticsType::Adapter, adapter.opened.adapterLuid);
    if (query == nullptr || query(&request) != d3dkmt::success) {
        return;
    }
    const auto count = request.queryResult.adapterInformation.nodeCount;
    if (count > mostNodes) {
        throw std::length_error("An adapter claims more engines than there can be");
    }
    adapter.nodes.resize(count);
    const std::lock_guard lock(samplingMutex);
    if (count > 0 && counterFrequency == 0) {
        counterFrequency = clock_.frequency();
    }
}

bool D3DKMTDeviceStatistics::matches(const AdapterRecord& adapter) const {
    return adapter.location == location_;
}

/// Whatever fails here is not seen by anybody: the adapter keeps its last sample.
void D3DKMTDeviceStatistics::sample(D3DKMTAdapter& adapter) {
    try {
        if (gdi32_ == invalidLibrary) {
            throw std::runtime_error("Could not fing gdi32.dll");
        }
        const auto query = queryFunction();
        if (query == nullptr) {
            throw std::runtime_error("Could find D3DKMTQueryStatistics.");
        }
        for (std::uint32_t id = 0; id < adapter.nodes.size(); ++id) {
            auto& node = adapter.nodes[id];
            node.takeCounter(clock_.counter());
            auto request = clearedQuery(d3dkmt::QueryStatisticsType::Node, adapter.opened.adapterLuid);
            request.query.nodeId = id;
            // A query that fails leaves the last delta in force, over the new window.
            if (query(&request) == d3dkmt::success) {
                node.takeRunningTime(request.queryResult.nodeInformation.runningTime);
            }
        }
    } catch (...) {
    }
}

VideoCardStatisticsStatus D3DKMTDeviceStatistics::readUsage(std::uint64_t& percent) {
    for (auto& adapter : adapters_) {
        sample(adapter);
    }
    std::vector<float> loads;
    for (const auto& adapter : adapters_) {
        for (const auto& node : adapter.nodes) {
            loads.push_back(nodeLoad(node, counterFrequency));
        }
    }
    if (loads.empty()) {
        return VideoCardStatisticsStatus::Unavailable;
    }
    percent = static_cast<std::uint64_t>(std::ceil(*std::ranges::max_element(loads)));
    return VideoCardStatisticsStatus::Ok;
}

VideoCardStatisticsStatus D3DKMTDeviceStatistics::getUsage(std::uint64_t& percent) {
    const std::lock_guard lock(samplingMutex);
    if (firstUsageQuery_) {
        std::uint64_t discarded = 0;
        static_cast<void>(readUsage(discarded));
        const auto deadline = clock_.now() + firstWindow;
        for (auto time = clock_.now(); time < deadline; time = clock_.now()) {
            clock_.sleepFor(deadline - time);
        }
        firstUsageQuery_ = false;
    }
    return readUsage(percent);
}

D3DKMTDeviceStatisticsScanner::D3DKMTDeviceStatisticsScanner(std::vector<AdapterRecord> adapters)
    : D3DKMTDeviceStatisticsScanner(std::move(adapters), *getModule(), systemSampleClock()) {}

D3DKMTDeviceStatisticsScanner::D3DKMTDeviceStatisticsScanner(std::vector<AdapterRecord> adapters,
                                                             ::Module& loader, SampleClock& clock)
    : adapters_(std::move(adapters)), loader_(loader), clock_(clock) {}

StatisticsSources& D3DKMTDeviceStatisticsScanner::scan(StatisticsSources& sources) {
    for (const auto& adapter : adapters_) {
        try {
            sources.push_back(std::make_unique<D3DKMTDeviceStatistics>(adapter, loader_, clock_));
        } catch (...) {
            // A card without a driver that keeps statistics has no such source.
        }
    }
    return sources;
}

} // namespace vexil::module::video_card
