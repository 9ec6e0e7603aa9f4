#include "host/core/live_values.h"

#include "core/module.h"
#include "host/core/statistics_source.h"
#include "host/core/test_catalogue.h"
#include "host/core/test_runner.h"

#include <algorithm>
#include <charconv>

namespace vexil::host {

namespace {

constexpr std::int32_t thermalTool = 90;

} // namespace

std::optional<std::int64_t> temperatureOf(std::string_view line) {
    constexpr std::string_view field = "\"temperatureCelsius\": ";
    // The last one: a card's name stands before it and may hold anything.
    const auto start = line.rfind(field);
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    line.remove_prefix(start + field.size());
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), value);
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

void ThermalToolSource::read(const Card& card, LiveValues& values) {
    const auto ids = module_.testIds();
    if (std::ranges::find(ids, thermalTool) == ids.end()) {
        return;
    }
    const auto tool = module_.createTest(thermalTool);
    if (!tool || !isOffered(*tool, card)) {
        return;
    }
    const std::uint8_t neverCancelled = 0;
    TestRunner runner(module_.dispatcher(),
                      {&neverCancelled, std::make_shared<core::SystemEventState>(), {}});
    const auto run = runner.run(card, *tool);
    if (run.result == core::TestResult::Passed && !run.messages.empty()) {
        values.temperatureCelsius = temperatureOf(run.messages.front().key);
    }
}

std::vector<std::unique_ptr<LiveSource>> liveSources(const core::Module& module, unsigned hardwareThreads) {
    std::vector<std::unique_ptr<LiveSource>> sources;
    if (dispatcherHasWorker(hardwareThreads)) {
        sources.push_back(std::make_unique<ThermalToolSource>(module));
    }
    sources.push_back(std::make_unique<StatisticsSource>());
    return sources;
}

std::vector<LiveValues> readLiveValues(const std::vector<Card>& cards,
                                       const std::vector<std::unique_ptr<LiveSource>>& sources) {
    std::vector<LiveValues> values(cards.size());
    for (std::size_t i = 0; i < cards.size(); ++i) {
        for (const auto& source : sources) {
            source->read(cards[i], values[i]);
        }
    }
    return values;
}

} // namespace vexil::host
