#include "platform/kernel_graphics.h"

#include "core/shared_api.h"
#include "platform/wide_text.h"
#include "simulated/scenario/scenario_of_process.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <exception>
#include <map>
#include <memory>
#include <mutex>
#include <ratio>
#include <utility>

// The kernel-mode graphics library of a simulated machine.
namespace {

using namespace vexil::platform;
using vexil::simulated::Scenario;
using vexil::simulated::ScenarioCard;
using vexil::simulated::ScenarioEngine;

using HundredNanoseconds = std::chrono::duration<double, std::ratio<1, 10'000'000>>;

/// Since the library was loaded: how long an engine at full load has run.
double uptime() {
    static const auto start = std::chrono::steady_clock::now();
    return HundredNanoseconds(std::chrono::steady_clock::now() - start).count();
}

std::uint64_t number(const d3dkmt::Luid& luid) {
    return std::uint64_t{static_cast<std::uint32_t>(luid.highPart)} << 32 | luid.lowPart;
}

/// A failing call leaves the caller's record as nonsense, for callers must not read it.
void spoil(d3dkmt::QueryStatistics& request) {
    std::memset(&request.queryResult, 0xA5, sizeof(request.queryResult));
}

d3dkmt::Status open(d3dkmt::OpenAdapterFromDeviceName& request) {
    const auto scenario = vexil::simulated::scenarioOfProcess();
    if (!scenario || request.deviceName == nullptr) {
        return d3dkmt::invalidParameter;
    }
    const auto path = toUtf8(request.deviceName);
    const auto card = std::ranges::find_if(scenario->cards, [&](const ScenarioCard& candidate) {
        return candidate.hasInterface && candidate.devicePath() == path;
    });
    if (card == scenario->cards.end()) {
        return d3dkmt::invalidParameter;
    }
    if (card->kernelGraphics.openStatus != d3dkmt::success) {
        return card->kernelGraphics.openStatus;
    }
    request.adapter = static_cast<std::uint32_t>(card->luid);
    request.adapterLuid = {static_cast<std::uint32_t>(card->luid),
                           static_cast<std::int32_t>(card->luid >> 32)};
    return d3dkmt::success;
}

d3dkmt::Status countEngines(const ScenarioCard& card, d3dkmt::QueryStatistics& request) {
    const auto& section = card.kernelGraphics;
    if (section.statisticsStatus != d3dkmt::success) {
        return section.statisticsStatus;
    }
    std::memset(&request.queryResult, 0, sizeof(request.queryResult));
    request.queryResult.adapterInformation.nodeCount =
        section.engineCount.value_or(static_cast<std::uint32_t>(section.engines.size()));
    return d3dkmt::success;
}

/// Counts the queries for each engine of the scenario, from 1.
class QueryCounts {
public:
    std::uint64_t next(const std::shared_ptr<const Scenario>& scenario, std::uint64_t luid,
                       std::uint32_t engine) {
        const std::lock_guard lock(mutex_);
        if (scenario_ != scenario) {
            scenario_ = scenario;
            counts_.clear();
        }
        return ++counts_[{luid, engine}];
    }

private:
    std::mutex mutex_;
    std::shared_ptr<const Scenario> scenario_;
    std::map<std::pair<std::uint64_t, std::uint32_t>, std::uint64_t> counts_;
};

std::int64_t runningTime(const ScenarioEngine& engine, std::uint64_t query) {
    const auto& times = engine.runningTimes;
    return times.empty() ? static_cast<std::int64_t>(uptime() * engine.loadPercent / 100.0)
                         : static_cast<std::int64_t>(times[std::min<std::size_t>(query, times.size()) - 1]);
}

d3dkmt::Status readEngine(const std::shared_ptr<const Scenario>& scenario, const ScenarioCard& card,
                          d3dkmt::QueryStatistics& request) {
    static QueryCounts counts;
    const auto& engines = card.kernelGraphics.engines;
    const auto id = request.query.nodeId;
    if (id >= engines.size()) {
        return d3dkmt::invalidParameter;
    }
    const auto& engine = engines[id];
    const auto query = counts.next(scenario, card.luid, id);
    if (engine.status != d3dkmt::success && query >= engine.failsFrom) {
        return engine.status;
    }
    std::memset(&request.queryResult, 0, sizeof(request.queryResult));
    request.queryResult.nodeInformation.runningTime = runningTime(engine, query);
    return d3dkmt::success;
}

d3dkmt::Status query(d3dkmt::QueryStatistics& request) {
    const auto scenario = vexil::simulated::scenarioOfProcess();
    if (!scenario) {
        return d3dkmt::invalidParameter;
    }
    const auto card = std::ranges::find(scenario->cards, number(request.adapterLuid), &ScenarioCard::luid);
    if (card == scenario->cards.end()) {
        return d3dkmt::invalidParameter;
    }
    switch (request.type) {
    case d3dkmt::QueryStatisticsType::Adapter:
        return countEngines(*card, request);
    case d3dkmt::QueryStatisticsType::Node:
        return readEngine(scenario, *card, request);
    }
    return d3dkmt::invalidParameter;
}

/// Nothing may be thrown across a plain function.
template <typename Request>
d3dkmt::Status guarded(d3dkmt::Status (*function)(Request&), Request* request) {
    try {
        return request == nullptr ? d3dkmt::invalidParameter : function(*request);
    } catch (const std::exception&) {
        return d3dkmt::invalidParameter;
    }
}

} // namespace

extern "C" {

VEXIL_SHARED_API d3dkmt::Status D3DKMTOpenAdapterFromDeviceName(d3dkmt::OpenAdapterFromDeviceName* request) {
    return guarded(open, request);
}

VEXIL_SHARED_API d3dkmt::Status D3DKMTQueryStatistics(d3dkmt::QueryStatistics* request) {
    const auto status = guarded(query, request);
    if (status != d3dkmt::success && request != nullptr) {
        spoil(*request);
    }
    return status;
}

VEXIL_SHARED_API d3dkmt::Status D3DKMTCloseAdapter(const d3dkmt::CloseAdapter*) { return d3dkmt::success; }
}
