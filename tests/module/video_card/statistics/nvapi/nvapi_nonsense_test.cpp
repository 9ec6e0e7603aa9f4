#include "module/video_card/statistics/nvapi/nvapi_scanner.h"
#include "nvapi_loader.h"

#include <gtest/gtest.h>

#include <random>

namespace vexil::tests {
namespace {

using namespace module::video_card;

/// Draws what a broken library might answer: mostly what is usual, sometimes an extreme, sometimes anything.
class Nonsense {
public:
    std::uint32_t number() {
        static constexpr std::uint32_t extremes[] = {0,  1,  2,          3,          4,         63,
                                                     64, 65, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        return below(4) == 0 ? extremes[below(std::size(extremes))] : static_cast<std::uint32_t>(engine_());
    }
    std::optional<std::uint32_t> maybe() { return below(4) == 0 ? std::nullopt : std::optional(number()); }
    std::int32_t status() { return below(4) == 0 ? static_cast<std::int32_t>(number()) : 0; }
    std::size_t below(std::size_t bound) { return engine_() % bound; }

    simulated::NvapiMachine machine() {
        simulated::NvapiMachine machine;
        machine.library.gpuCount = maybe();
        machine.library.statuses["NvAPI_EnumPhysicalGPUs"] = status();
        for (const char* name : names) {
            if (below(16) == 0) {
                machine.library.missingFunctions.emplace_back(name);
            }
        }
        machine.gpus.resize(below(4));
        for (auto& gpu : machine.gpus) {
            gpu.bus = maybe();
            gpu.slot = maybe();
            gpu.celsius.resize(below(4));
            for (auto& celsius : gpu.celsius) {
                celsius = static_cast<std::int32_t>(number());
            }
            gpu.sensorCount = maybe();
            gpu.usagePercent = maybe();
            gpu.totalKib = maybe();
            gpu.freeKib = maybe();
            for (const char* name : names) {
                gpu.statuses[name] = status();
            }
        }
        return machine;
    }

private:
    static constexpr const char* names[] = {
        "NvAPI_EnumPhysicalGPUs",       "NvAPI_GPU_GetBusId",      "NvAPI_GPU_GetBusSlotId",
        "NvAPI_GPU_GetThermalSettings", "NvAPI_GPU_GetMemoryInfo", "usage",
    };
    std::mt19937_64 engine_{20240607};
};

TEST(NvapiNonsense, DoesNotHarmTheCallerInAMillionCalls) {
    NvapiFixture nvidia;
    Nonsense nonsense;
    std::uint64_t calls = 0;
    std::uint64_t sourcesMade = 0;
    std::uint64_t refusals = 0;
    std::uint64_t kept = 0;
    while (calls < 1'000'000) {
        simulated::setNvapiMachine(nonsense.machine());
        nvidia.loader.events.clear();
        // An unload that the library refused has left the last reference standing.
        nvidia.loader.unloadStatus = 0;
        kept += nvidia.access.unload() == 0 ? 1 : 0;
        ASSERT_EQ(nvidia.access.unload(), -4) << "every other reference came back";
        nvidia.loader.initializeStatus = nonsense.status();
        nvidia.loader.unloadStatus = nonsense.status();
        StatisticsSources sources;
        try {
            NvapiDeviceStatisticsScanner(nvidia.runtime).scan(sources);
        } catch (int status) {
            ASSERT_EQ(status, nvidia.loader.initializeStatus);
            ++refusals;
        }
        calls += 1;
        sourcesMade += sources.size();
        for (int round = 0; round < 10; ++round) {
            // The library goes on changing its mind behind sources that stand.
            simulated::setNvapiMachine(nonsense.machine());
            for (const auto& source : sources) {
                std::int64_t celsius = 0;
                std::uint64_t value = 0;
                source->getTemperature(celsius);
                source->getUsage(value);
                source->getTotalMemory(value);
                const auto before = value = 1;
                if (source->getFreeMemory(value) == VideoCardStatisticsStatus::Ok) {
                    ASSERT_LE(value, 0xFFFFFC00U) << "32 bits at most";
                } else {
                    ASSERT_EQ(value, before);
                }
                calls += 4;
            }
        }
    }
    EXPECT_GT(sourcesMade, 10'000U) << "the nonsense left nothing to ask";
    EXPECT_GT(refusals, 100U);
    EXPECT_GT(kept, 100U);
}

} // namespace
} // namespace vexil::tests
