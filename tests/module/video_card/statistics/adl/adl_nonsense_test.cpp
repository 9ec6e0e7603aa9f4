#include "adl_loader.h"
#include "module/video_card/statistics/adl/adl_scanner.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <random>

namespace vexil::tests {
namespace {

using namespace module::video_card;

/// Draws what a broken library might answer: mostly what is usual, sometimes an extreme, sometimes anything.
class Nonsense {
public:
    std::int32_t number() {
        using Limits = std::numeric_limits<std::int32_t>;
        static constexpr std::int32_t extremes[] = {
            0, 1, -1, 2, 5, 6, 7, 2048, 999'999, Limits::min(), Limits::max()};
        return below(2) == 0 ? extremes[below(std::size(extremes))] : static_cast<std::int32_t>(engine_());
    }
    std::optional<std::int32_t> maybe() { return below(4) == 0 ? std::nullopt : std::optional(number()); }
    std::int32_t status() { return below(4) == 0 ? number() : 0; }
    std::size_t below(std::size_t bound) { return engine_() % bound; }

    simulated::AdlMachine machine() {
        simulated::AdlMachine machine;
        // A count beyond the cards is tried often, but rarely one that makes the caller walk a million
        // records.
        if (below(3) == 0) {
            machine.library.adapterCount =
                below(100) == 0 ? number() : static_cast<std::int32_t>(below(40)) - 4;
        }
        machine.library.statuses["ADL_Adapter_NumberOfAdapters_Get"] = below(8) == 0 ? number() : 0;
        machine.library.statuses["ADL_Adapter_AdapterInfo_Get"] = below(8) == 0 ? number() : 0;
        machine.cards.resize(below(4));
        for (auto& card : machine.cards) {
            fill(card);
        }
        return machine;
    }

private:
    void fill(simulated::AdlCardSection& card) {
        card.adapters.resize(below(4));
        for (auto& adapter : card.adapters) {
            adapter = {number(), number(), number(), number(), number(), status()};
        }
        card.overdriveSupported = maybe();
        card.overdriveVersion =
            below(4) == 0 ? maybe() : std::optional(5 + static_cast<std::int32_t>(below(3)));
        card.millidegrees = maybe();
        card.thermalControllers.resize(below(12));
        for (auto& controller : card.thermalControllers) {
            controller = {maybe(), status(), maybe(), status()};
        }
        card.memoryBytes = static_cast<std::int64_t>(engine_());
        card.usedMegabytes = maybe();
        for (const char* name :
             {"ADL2_Overdrive_Caps", "ADL_Overdrive6_Temperature_Get", "ADL2_OverdriveN_Temperature_Get",
              "ADL_Adapter_MemoryInfo_Get", "ADL2_Adapter_VRAMUsage_Get"}) {
            card.statuses[name] = status();
        }
    }

    std::mt19937_64 engine_{20240608};
};

TEST(AdlNonsense, DoesNotHarmTheCallerInAMillionCalls) {
    static constexpr const char* optional[] = {"ADL_Overdrive5_ThermalDevices_Enum",
                                               "ADL_Overdrive5_Temperature_Get",
                                               "ADL_Overdrive6_Temperature_Get",
                                               "ADL2_OverdriveN_Temperature_Get",
                                               "ADL_Adapter_MemoryInfo_Get",
                                               "ADL2_Adapter_VRAMUsage_Get",
                                               "ADL2_Overdrive_Caps",
                                               "ADL_Adapter_NumberOfAdapters_Get"};
    Nonsense nonsense;
    std::uint64_t calls = 0;
    std::uint64_t sourcesMade = 0;
    std::uint64_t inRange = 0;
    while (calls < 1'000'000) {
        AdlFixture amd;
        amd.loader.createStatus = nonsense.below(8) == 0 ? nonsense.number() : 0;
        if (nonsense.below(4) == 0) {
            amd.loader.replacements[optional[nonsense.below(std::size(optional))]] = nullptr;
        }
        for (int scan = 0; scan < 20; ++scan) {
            simulated::setAdlMachine(nonsense.machine());
            StatisticsSources sources;
            ADLDeviceStatisticsScanner(amd.contexts).scan(sources);
            calls += 1;
            sourcesMade += sources.size();
            for (int round = 0; round < 5; ++round) {
                // The library goes on changing its mind behind sources that stand.
                if (round > 0) {
                    simulated::setAdlMachine(nonsense.machine());
                }
                for (const auto& source : sources) {
                    std::int64_t celsius = 0;
                    std::uint64_t value = 0;
                    if (source->getTemperature(celsius) == VideoCardStatisticsStatus::Ok) {
                        ASSERT_GE(celsius, -50);
                        ASSERT_LE(celsius, 200);
                        ++inRange;
                    }
                    source->getUsage(value);
                    source->getTotalMemory(value);
                    source->getFreeMemory(value);
                    calls += 4;
                }
            }
        }
    }
    EXPECT_GT(sourcesMade, 10'000U) << "the nonsense left nothing to ask";
    EXPECT_GT(inRange, 1000U);
}

} // namespace
} // namespace vexil::tests
