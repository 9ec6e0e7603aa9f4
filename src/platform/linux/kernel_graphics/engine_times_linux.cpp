#include "platform/linux/kernel_graphics/engine_times.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vexil::platform {

namespace {

struct EngineRow {
    std::string_view driver;
    const char* engine;
};

// A driver may tell of an engine only once somebody has used it, and the number of engines of a card is asked
// for only once: so it must be known beforehand.
constexpr std::array engineRows = {
    EngineRow{"amdgpu", "gfx"},   EngineRow{"amdgpu", "compute"}, EngineRow{"amdgpu", "dma"},
    EngineRow{"amdgpu", "dec"},   EngineRow{"amdgpu", "enc"},     EngineRow{"amdgpu", "enc_1"},
    EngineRow{"amdgpu", "jpeg"},  EngineRow{"amdgpu", "vpe"},     EngineRow{"i915", "render"},
    EngineRow{"i915", "copy"},    EngineRow{"i915", "video"},     EngineRow{"i915", "video-enhance"},
    EngineRow{"i915", "compute"}, EngineRow{"xe", "rcs"},         EngineRow{"xe", "bcs"},
    EngineRow{"xe", "vcs"},       EngineRow{"xe", "vecs"},        EngineRow{"xe", "ccs"},
};
static_assert(engineRows.size() == 18);

constexpr double nanosecondsOfUnit = 100.0;

/// 0 for a counter that was set back.
double grown(std::uint64_t now, std::uint64_t before) {
    return now > before ? static_cast<double>(now - before) : 0.0;
}

/// How long all engines of the kind would have had to run for that.
double fullTime(const EngineUse& use) {
    return static_cast<double>(use.nanoseconds) / nanosecondsOfUnit / static_cast<double>(use.capacity);
}

} // namespace

std::vector<std::string> enginesOfDriver(std::string_view driver) {
    std::vector<std::string> engines;
    for (const auto& row : engineRows) {
        if (row.driver == driver) {
            engines.emplace_back(row.engine);
        }
    }
    return engines;
}

void EngineTimes::add(const std::string& engine, const EngineUse& use, const EngineUse* last,
                      std::int64_t elapsed) {
    const EngineUse before = last == nullptr ? EngineUse{} : *last;
    double time = grown(use.nanoseconds, before.nanoseconds) / nanosecondsOfUnit;
    const double passed = grown(use.totalCycles, before.totalCycles);
    if (last != nullptr && passed > 0) {
        time += grown(use.cycles, before.cycles) / passed * static_cast<double>(elapsed);
    }
    times_[engine] += time / static_cast<double>(use.capacity);
}

void EngineTimes::addClient(const Uses& uses, const Uses* last, std::int64_t elapsed) {
    const bool isOld = last == nullptr && updated_ && std::ranges::any_of(uses, [&](const auto& row) {
                           return fullTime(row.second) > static_cast<double>(elapsed);
                       });
    for (const auto& [engine, use] : uses) {
        const EngineUse* lastUse = isOld ? &use : nullptr;
        if (last != nullptr) {
            const auto found = last->find(engine);
            lastUse = found == last->end() ? nullptr : &found->second;
        }
        add(engine, use, lastUse, elapsed);
    }
}

void EngineTimes::update(const std::vector<DrmFdInfo>& clients, std::int64_t now) {
    const auto elapsed = std::max<std::int64_t>(0, now - std::exchange(lastUpdate_, now));
    std::map<std::uint64_t, Uses> current;
    for (const auto& client : clients) {
        const auto known = clients_.find(client.clientId);
        addClient(client.engines, known == clients_.end() ? nullptr : &known->second, elapsed);
        current[client.clientId] = client.engines;
    }
    clients_ = std::move(current);
    updated_ = true;
}

std::int64_t EngineTimes::runningTime(const std::string& engine) const {
    const auto found = times_.find(engine);
    return found == times_.end() ? 0 : static_cast<std::int64_t>(found->second);
}

std::vector<std::string> EngineTimes::engines() const {
    std::vector<std::string> names;
    for (const auto& [engine, time] : times_) {
        names.push_back(engine);
    }
    return names;
}

} // namespace vexil::platform
