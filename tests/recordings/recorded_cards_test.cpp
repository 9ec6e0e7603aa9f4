#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/adl/adl_scanner.h"
#include "platform/linux/kernel_graphics/drm_statistics.h"
#include "support/fake_kernel_graphics.h"
#include "support/library_at_path.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <ostream>
#include <string>

// What the libraries over amdgpu's files tell of cards whose files were recorded.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using namespace std::chrono_literals;
using platform::DrmStatistics;
using platform::PciAddress;

struct RecordedCard {
    const char* tree;
    PciAddress address;
    const char* location;
    std::optional<std::int64_t> celsius;
    std::uint64_t totalBytes;
    std::uint64_t freeBytes;  ///< of the used memory, whole MiB count
    std::int64_t busyPercent; ///< of the whole card
};

void PrintTo(const RecordedCard& card, std::ostream* stream) { *stream << card.tree; }

constexpr std::uint64_t mebi = 1ULL << 20;

const RecordedCard cards[] = {
    {"radeon_rx_vega_64",
     {0, 9, 0, 0},
     "09:00.0",
     std::nullopt,
     8'573'157'376,
     8'573'157'376 - 1421 * mebi,
     4},
    {"radeon_rx_580", {0, 1, 0, 0}, "01:00.0", 44, 4096 * mebi, (4096 - 512) * mebi, 11},
    {"radeon_rx_6900_xt", {0, 12, 0, 0}, "0c:00.0", 56, 17'163'091'968, 17'163'091'968 - 637 * mebi, 3},
};

class RecordedCards : public testing::TestWithParam<RecordedCard> {
protected:
    RecordedCards() { setenv("VEXIL_SYSFS_ROOT", sysfs().c_str(), 1); }
    ~RecordedCards() override { unsetenv("VEXIL_SYSFS_ROOT"); }

    [[nodiscard]] std::string sysfs() const { return tree_.root() / "sys"; }

    RecordedTree tree_{std::string(VEXIL_TEST_DATA) + "/" + GetParam().tree + ".tree"};
};

TEST_P(RecordedCards, TellTheirTemperatureAndMemoryThroughAdl) {
    LibraryAtPath loader(VEXIL_ADL_LIBRARY);
    ADLContexts contexts(loader);
    StatisticsSources sources;
    ADLDeviceStatisticsScanner(contexts).scan(sources);
    ASSERT_EQ(sources.size(), 1U);
    AdapterRecord adapter;
    adapter.location = GetParam().location;
    EXPECT_TRUE(sources[0]->matches(adapter));

    std::int64_t celsius = -1;
    const auto status = sources[0]->getTemperature(celsius);
    if (GetParam().celsius) {
        EXPECT_EQ(status, VideoCardStatisticsStatus::Ok);
        EXPECT_EQ(celsius, *GetParam().celsius);
    } else {
        EXPECT_EQ(status, VideoCardStatisticsStatus::Unavailable) << "its sensors were not recorded";
    }
    std::uint64_t bytes = 0;
    EXPECT_EQ(sources[0]->getTotalMemory(bytes), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(bytes, GetParam().totalBytes);
    EXPECT_EQ(sources[0]->getFreeMemory(bytes), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(bytes, GetParam().freeBytes);
}

TEST_P(RecordedCards, TellHowBusyTheyAreThroughTheKernelsStatistics) {
    FakeSampleClock clock;
    DrmStatistics statistics(sysfs(), tree_.root() / "proc", [&] { return clock.counter(); });
    constexpr d3dkmt::Luid luid{7, 0};
    statistics.addAdapter(luid, GetParam().address);
    d3dkmt::QueryStatistics query{};
    query.type = d3dkmt::QueryStatisticsType::Adapter;
    query.adapterLuid = luid;
    ASSERT_EQ(statistics.answer(query), d3dkmt::success);
    EXPECT_EQ(query.queryResult.adapterInformation.nodeCount, 9U) << "the card, and eight kinds of engines";

    clock.pass(10s);
    query = {};
    query.type = d3dkmt::QueryStatisticsType::Node;
    query.adapterLuid = luid;
    ASSERT_EQ(statistics.answer(query), d3dkmt::success);
    EXPECT_EQ(query.queryResult.nodeInformation.runningTime, GetParam().busyPercent * 1'000'000)
        << "in units of 100 nanoseconds";
}

INSTANTIATE_TEST_SUITE_P(Cards, RecordedCards, testing::ValuesIn(cards),
                         [](const auto& each) { return std::string(each.param.tree); });

TEST(RecordedMachineWithoutCards, HasNoneForAdl) {
    const RecordedTree tree(std::string(VEXIL_TEST_DATA) + "/virtual_machine.tree");
    setenv("VEXIL_SYSFS_ROOT", (tree.root() / "sys").c_str(), 1);
    LibraryAtPath loader(VEXIL_ADL_LIBRARY);
    ADLContexts contexts(loader);
    StatisticsSources sources;
    ADLDeviceStatisticsScanner(contexts).scan(sources);
    EXPECT_TRUE(sources.empty());
    unsetenv("VEXIL_SYSFS_ROOT");
}

} // namespace
} // namespace vexil::tests
