#include "host/core/statistics_source.h"

#include "core/message_keys.h"
#include "core/sal.h"
#include "module/video_card/adapter_list.h"
#include "module/video_card/device.h"
#include "module/video_card/device_identity.h"
#include "module/video_card/machine.h"

#include <algorithm>

namespace vexil::host {

namespace video_card = module::video_card;

namespace {

std::vector<video_card::AdapterRecord> adaptersOf(video_card::Machine& machine) {
    const std::shared_ptr<SystemDeviceList> devices(machine.acquireDeviceList(),
                                                    [&](auto*) { machine.releaseDeviceList(); });
    // Without the library that tells LUIDs: they join an adapter with Direct3D, which has no live values.
    return video_card::listAdapters(machine, {devices.get(), nullptr});
}

std::string udiOf(const video_card::AdapterRecord& adapter, video_card::Machine& machine) {
    const auto rows = video_card::identify(adapter, machine.strings(), machine.numbers()).rows;
    const auto row = std::ranges::find(rows, vexil::keys::udi, &core::KeyValue::first);
    return row == rows.end() ? std::string() : row->second;
}

} // namespace

StatisticsSource::StatisticsSource() {
    auto& machine = video_card::systemMachine();
    const auto adapters = adaptersOf(machine);
    if (adapters.empty()) {
        return;
    }
    auto scans = machine.statisticsScans(adapters);
    // It tells temperatures only, which come from the module's tool, and throws for an unknown processor.
    scans.intel = {};
    auto lists = video_card::scanStatistics(scans);
    for (const auto& adapter : adapters) {
        cards_.emplace(udiOf(adapter, machine), video_card::takeSources(lists, adapter));
    }
}

StatisticsSource::~StatisticsSource() = default;

void StatisticsSource::read(const Card& card, LiveValues& values) {
    const auto found = cards_.find(card.record.udi);
    if (found == cards_.end()) {
        return;
    }
    std::uint64_t value = 0;
    if (found->second->getUsage(value) == video_card::VideoCardStatisticsStatus::Ok) {
        values.usagePercent = value;
    }
    if (found->second->getFreeMemory(value) == video_card::VideoCardStatisticsStatus::Ok) {
        values.freeMemoryBytes = value;
    }
}

} // namespace vexil::host
