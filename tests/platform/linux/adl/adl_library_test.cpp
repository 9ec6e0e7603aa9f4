#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/adl/adl_scanner.h"
#include "platform/adl.h"
#include "support/library_at_path.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

// The library as it stands, opened by its file, over a machine of files.
namespace vexil::tests {
namespace {

using namespace module::video_card;
namespace adl = platform::adl;

constexpr const char* polarisFolder = "devices/pci0000:00/0000:00:01.0/0000:03:00.0";

class AdlLibrary : public testing::Test {
protected:
    AdlLibrary() { setenv("VEXIL_SYSFS_ROOT", tree_.root().c_str(), 1); }
    ~AdlLibrary() override { unsetenv("VEXIL_SYSFS_ROOT"); }

    std::vector<adl::AdapterInfo> adapters() {
        const auto context = contexts_.get();
        std::int32_t count = 0;
        EXPECT_EQ(context->numberOfAdaptersGet(&count), 0);
        std::vector<adl::AdapterInfo> list(static_cast<std::size_t>(count));
        const auto bytes = static_cast<std::int32_t>(list.size() * sizeof(adl::AdapterInfo));
        EXPECT_EQ(context->adapterInfoGet(list.data(), bytes), 0);
        return list;
    }

    RecordedTree tree_{std::string(VEXIL_TEST_DATA) + "/workstation.tree"};
    LibraryAtPath loader_{VEXIL_ADL_LIBRARY};
    ADLContexts contexts_{loader_};
};

TEST_F(AdlLibrary, HasWhatOneGenerationAndTheMemoryNeed) {
    const auto context = contexts_.get();
    ASSERT_NE(context, nullptr);
    EXPECT_NE(context->overdriveN, nullptr);
    EXPECT_EQ(context->overdrive5, nullptr);
    EXPECT_EQ(context->overdrive6, nullptr);
    EXPECT_NE(context->memory->memoryInfoGet, nullptr);
    EXPECT_NE(context->memory->vramUsageGet, nullptr);
}

TEST_F(AdlLibrary, ListsTheCardsAsAdapters) {
    const auto list = adapters();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].iAdapterIndex, 0);
    EXPECT_EQ(list[0].iBusNumber, 3);
    EXPECT_EQ(list[1].iAdapterIndex, 1);
    EXPECT_EQ(list[1].iBusNumber, 10);
    EXPECT_EQ(list[1].iSize, 1572);
    EXPECT_STREQ(list[1].strAdapterName, "AMD graphics card 1002:73df");
}

TEST_F(AdlLibrary, GivesTheModuleItsSource) {
    StatisticsSources sources;
    ADLDeviceStatisticsScanner(contexts_).scan(sources);
    ASSERT_EQ(sources.size(), 1U)
        << "the second card collapses into the first, whose device and function it has";
    AdapterRecord adapter;
    adapter.location = "03:00.0";
    EXPECT_TRUE(sources[0]->matches(adapter));
    std::int64_t celsius = 0;
    std::uint64_t bytes = 0;
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius, 44);
    EXPECT_EQ(sources[0]->getTotalMemory(bytes), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(bytes, 8ULL << 30);
    EXPECT_EQ(sources[0]->getFreeMemory(bytes), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(bytes, 9ULL << 30) << "3 GiB in use wrap to less than nothing";
}

TEST_F(AdlLibrary, FollowsTheFilesFromCallToCall) {
    StatisticsSources sources;
    ADLDeviceStatisticsScanner(contexts_).scan(sources);
    ASSERT_EQ(sources.size(), 1U);
    const auto sensor = std::string(polarisFolder) + "/hwmon/hwmon2/temp1_input";
    tree_.remove(sensor);
    tree_.addFile(sensor, "61000\n");
    std::int64_t celsius = 0;
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius, 61);
    tree_.remove(sensor);
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Unavailable);
    tree_.remove(std::string(polarisFolder) + "/mem_info_vram_used");
    std::uint64_t bytes = 0;
    EXPECT_EQ(sources[0]->getFreeMemory(bytes), VideoCardStatisticsStatus::Unavailable);
    EXPECT_EQ(sources[0]->getTotalMemory(bytes), VideoCardStatisticsStatus::Ok);
}

TEST_F(AdlLibrary, KeepsTheIndexOfACardThatIsGoneAndSaysThatItIsInactive) {
    ASSERT_EQ(adapters().size(), 2U);
    tree_.remove("bus/pci/devices/0000:03:00.0");
    tree_.remove(polarisFolder);
    const auto list = adapters();
    ASSERT_EQ(list.size(), 2U);
    const auto context = contexts_.get();
    std::int32_t active = 7;
    EXPECT_EQ(context->activeGet(0, &active), 0);
    EXPECT_EQ(active, 0);
    EXPECT_EQ(context->activeGet(1, &active), 0);
    EXPECT_EQ(active, 1);
    StatisticsSources sources;
    ADLDeviceStatisticsScanner(contexts_).scan(sources);
    AdapterRecord adapter;
    adapter.location = "0a:00.0";
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_TRUE(sources[0]->matches(adapter));
}

TEST_F(AdlLibrary, FindsACardThatIsPluggedInLater) {
    ASSERT_EQ(adapters().size(), 2U);
    const std::string late = "bus/pci/devices/0000:01:00.0/";
    tree_.addFile(late + "vendor", "0x1002\n");
    tree_.addFile(late + "device", "0x744c\n");
    tree_.addFile(late + "class", "0x030000\n");
    tree_.addLink(late + "driver", "../../drivers/amdgpu");
    const auto list = adapters();
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[2].iBusNumber, 1) << "behind those that have an index";
}

TEST_F(AdlLibrary, DoesNotStartWithoutACardAndLooksAgainTheNextTime) {
    const RecordedTree empty;
    setenv("VEXIL_SYSFS_ROOT", empty.root().c_str(), 1);
    EXPECT_EQ(contexts_.get(), nullptr);
    setenv("VEXIL_SYSFS_ROOT", tree_.root().c_str(), 1);
    EXPECT_NE(contexts_.get(), nullptr);
}

TEST_F(AdlLibrary, RefusesWhatCannotBe) {
    const auto context = contexts_.get();
    ASSERT_EQ(adapters().size(), 2U);
    adl::AdapterInfo one[1];
    EXPECT_EQ(context->numberOfAdaptersGet(nullptr), adl::nullPointer);
    EXPECT_EQ(context->adapterInfoGet(nullptr, 4000), adl::nullPointer);
    EXPECT_EQ(context->adapterInfoGet(one, sizeof(one)), adl::invalidParameterSize);
    EXPECT_EQ(context->adapterInfoGet(one, -1), adl::invalidParameterSize);
    std::int32_t value = 0;
    for (const std::int32_t index : {-1, 2, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_EQ(context->activeGet(index, &value), adl::invalidAdapterIndex);
        EXPECT_EQ(context->overdriveCaps(nullptr, index, &value, &value, &value), adl::invalidAdapterIndex);
        EXPECT_EQ(context->overdriveN->temperatureGet(nullptr, index, 1, &value), adl::invalidAdapterIndex);
        EXPECT_EQ(context->memory->vramUsageGet(nullptr, index, &value), adl::invalidAdapterIndex);
    }
    EXPECT_EQ(context->activeGet(0, nullptr), adl::nullPointer);
    EXPECT_EQ(context->overdriveCaps(nullptr, 0, &value, &value, nullptr), adl::nullPointer);
    EXPECT_EQ(context->memory->memoryInfoGet(0, nullptr), adl::nullPointer);
    EXPECT_EQ(context->overdriveN->temperatureGet(nullptr, 0, 2, &value), adl::invalidParameter)
        << "no hotspot";
}

} // namespace
} // namespace vexil::tests
