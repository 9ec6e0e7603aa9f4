#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"
#include "module/video_card/statistics/intel/intel_device_statistics.h"
#include "platform/linux/kernel_graphics/drm_statistics.h"
#include "platform/performance_counter.h"
#include "platform/shared_library.h"
#include "simulated/scenario/scenario.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>

namespace {

using namespace vexil;
using namespace module::video_card;

std::vector<AdapterRecord> cards() {
    std::vector<AdapterRecord> records;
    for (const auto& card : simulated::loadScenario(VEXIL_SCENARIO_FILE).cards) {
        AdapterRecord record;
        record.vendorId = card.vendorId;
        record.location = card.location;
        record.devicePaths = {card.devicePath()};
        records.push_back(record);
    }
    return records;
}

StatisticsScans scansOf(const std::vector<AdapterRecord>& records) {
    StatisticsScans scans;
    scans.intel = [](StatisticsSources& sources) { IntelDeviceStatisticsScanner().scan(sources); };
    scans.d3dkmt = [&](StatisticsSources& sources) { D3DKMTDeviceStatisticsScanner(records).scan(sources); };
    return scans;
}

/// To be held against the 50 milliseconds that all sources together may take.
void scanOfProcessorAndKernelGraphics(benchmark::State& state) {
    const auto records = cards();
    const auto scans = scansOf(records);
    for (auto _ : state) {
        benchmark::DoNotOptimize(scanStatistics(scans));
    }
}
BENCHMARK(scanOfProcessorAndKernelGraphics)->Unit(benchmark::kMillisecond);

/// To be held against one millisecond.
void allValuesOfACard(benchmark::State& state) {
    const auto records = cards();
    auto lists = scanStatistics(scansOf(records));
    const auto card = takeSources(lists, records.back());
    std::int64_t celsius = 0;
    std::uint64_t value = 0;
    if (card->getUsage(value) != VideoCardStatisticsStatus::Ok ||
        card->getTemperature(celsius) != VideoCardStatisticsStatus::Ok) {
        state.SkipWithError("the simulated card does not answer");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(card->getTemperature(celsius));
        benchmark::DoNotOptimize(card->getUsage(value));
        benchmark::DoNotOptimize(card->getTotalMemory(value));
        benchmark::DoNotOptimize(card->getFreeMemory(value));
    }
}
BENCHMARK(allValuesOfACard)->Unit(benchmark::kMicrosecond);

/// The Linux library on this machine's own processes: what a steady query costs beside them.
void clientsOfThisMachine(benchmark::State& state) {
    platform::DrmClients clients("/proc");
    benchmark::DoNotOptimize(clients.read("0000:01:00.0"));
    for (auto _ : state) {
        benchmark::DoNotOptimize(clients.read("0000:01:00.0"));
    }
}
BENCHMARK(clientsOfThisMachine)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int count, char** values) {
    setenv("VEXIL_SCENARIO", VEXIL_SCENARIO_FILE, 1);
    for (const char* file : {VEXIL_KERNEL_GRAPHICS, VEXIL_PROCESSOR, VEXIL_DRIVER_SERVICE}) {
        if (platform::openLibraryPath(file) == nullptr) {
            return 1;
        }
    }
    benchmark::Initialize(&count, values);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
