#include "module/video_card/device_scanner.h"
#include "module/video_card/machine.h"
#include "module/video_card/statistics/composite_statistics.h"
#include "platform/linux/kernel_graphics/drm_clients.h"
#include "platform/shared_library.h"
#include "simulated/scenario/scenario.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

// What the live values cost on the healthy simulated machine: finding their sources once a scan, and asking a
// card for all of its values again and again.
namespace {

using namespace vexil;
using namespace vexil::module::video_card;

std::vector<AdapterRecord> adaptersOfScenario() {
    std::vector<AdapterRecord> adapters;
    for (const auto& card : simulated::loadScenario(VEXIL_SCENARIO_FILE).cards) {
        AdapterRecord adapter;
        adapter.name = card.name;
        adapter.vendorId = card.vendorId;
        adapter.deviceId = card.deviceId;
        adapter.location = card.location;
        adapter.adapterLuids = {card.luid};
        adapter.devicePaths = {card.devicePath()};
        adapters.push_back(std::move(adapter));
    }
    return adapters;
}

StatisticsSourceLists scan(const std::vector<AdapterRecord>& adapters) {
    return scanStatistics(systemMachine().statisticsScans(adapters));
}

void scanOfAllSources(benchmark::State& state) {
    const auto adapters = adaptersOfScenario();
    for (auto _ : state) {
        benchmark::DoNotOptimize(scan(adapters));
    }
}

/// The simulated machine without Direct3D, whose devices are for another to make.
class MachineWithoutDirect3D final : public Machine {
public:
    SystemDeviceList* acquireDeviceList() override { return machine_.acquireDeviceList(); }
    void releaseDeviceList() override { machine_.releaseDeviceList(); }
    StringHandler& strings() override { return machine_.strings(); }
    NumberHandler& numbers() override { return machine_.numbers(); }
    void* loadKernelGraphics() override { return machine_.loadKernelGraphics(); }
    void unloadKernelGraphics(void* library) override { machine_.unloadKernelGraphics(library); }
    std::uint64_t adapterLuid(void* library, const std::string& path) override {
        return machine_.adapterLuid(library, path);
    }
    bool queryCim(const char* property, const std::string& where, const char* className,
                  std::string& value) override {
        return machine_.queryCim(property, where, className, value);
    }
    std::int32_t cudaDriverVersion() override { return machine_.cudaDriverVersion(); }
    std::vector<CudaDeviceRecord> cudaDevices() override { return machine_.cudaDevices(); }
    std::vector<Dx11Context> direct3dContexts() override { return {}; }
    StatisticsScans statisticsScans(const std::vector<AdapterRecord>& adapters) override {
        return machine_.statisticsScans(adapters);
    }

private:
    Machine& machine_ = systemMachine();
};

class DeafListener final : public core::DeviceScanListener {
public:
    void deviceFound(const core::DeviceRecord&) override {}
    void scanFinished() override {}
    void presenceChecked(bool) override {}
};

/// To be held against 50 milliseconds: a whole scan of the module, with a scanner of its own, but for the
/// creation of the Direct3D devices.
void scanOfTheModule(benchmark::State& state) {
    MachineWithoutDirect3D machine;
    const auto listener = std::make_shared<DeafListener>();
    for (auto _ : state) {
        DeviceScanner scanner(machine);
        scanner.scan(listener);
        if (scanner.devices().size() != adaptersOfScenario().size()) {
            state.SkipWithError("the scan misses cards");
        }
    }
}

void allValuesOfACard(benchmark::State& state, std::size_t place) {
    const auto adapters = adaptersOfScenario();
    auto lists = scan(adapters);
    const auto card = takeSources(lists, adapters.at(place));
    std::int64_t celsius = 0;
    std::uint64_t value = 0;
    // The first question for the load waits for a second sample.
    card->getUsage(value);
    for (auto _ : state) {
        benchmark::DoNotOptimize(card->getTemperature(celsius));
        benchmark::DoNotOptimize(card->getUsage(value));
        benchmark::DoNotOptimize(card->getTotalMemory(value));
        benchmark::DoNotOptimize(card->getFreeMemory(value));
    }
}

/// The Linux library over this machine's own processes: what a steady question for the load costs beside
/// them.
void clientsOfThisMachine(benchmark::State& state) {
    platform::DrmClients clients("/proc");
    benchmark::DoNotOptimize(clients.read("0000:01:00.0"));
    for (auto _ : state) {
        benchmark::DoNotOptimize(clients.read("0000:01:00.0"));
    }
}

} // namespace

int main(int argc, char** argv) {
    setenv("VEXIL_SCENARIO", VEXIL_SCENARIO_FILE, 1);
    for (const char* file : {VEXIL_STAND_INS}) {
        if (platform::openLibraryPath(file) == nullptr) {
            std::fprintf(stderr, "%s cannot be opened\n", file);
            return 1;
        }
    }
    benchmark::RegisterBenchmark("scan of the module but for Direct3D", scanOfTheModule)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("scan of all sources", scanOfAllSources)->Unit(benchmark::kMicrosecond);
    for (std::size_t place = 0; place < adaptersOfScenario().size(); ++place) {
        const auto name = "all values of " + adaptersOfScenario()[place].name;
        benchmark::RegisterBenchmark(name.c_str(), allValuesOfACard, place)->Unit(benchmark::kMicrosecond);
    }
    benchmark::RegisterBenchmark("the kernel's clients on this machine", clientsOfThisMachine)
        ->Unit(benchmark::kMicrosecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
