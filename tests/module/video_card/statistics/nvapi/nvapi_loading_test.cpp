#include "core/sal.h"
#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/nvapi/nvapi_scanner.h"
#include "platform/display_driver_library.h"
#include "platform/library_names.h"
#include "platform/shared_library.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vexil::tests {
namespace {

using namespace module::video_card;

/// What a host does for a simulated machine, before any library of a vendor is loaded.
class SimulatedMachine final : public testing::Environment {
public:
    void SetUp() override {
        static char scenario[] = "VEXIL_SCENARIO=" VEXIL_HEALTHY_SCENARIO;
        putenv(scenario);
        ASSERT_NE(platform::openLibraryPath(VEXIL_STAND_IN), nullptr);
    }
};
[[maybe_unused]] const auto* const machine = testing::AddGlobalTestEnvironment(new SimulatedMachine);

TEST(NvapiLoading, FindsTheGpuOfTheHealthyMachineThroughTheVendorsName) {
    StatisticsSources sources;
    NvapiDeviceStatisticsScanner().scan(sources);
    ASSERT_EQ(sources.size(), 1U);
    AdapterRecord adapter;
    adapter.location = "01:00.0";
    EXPECT_TRUE(sources[0]->matches(adapter));
    std::int64_t celsius = 0;
    std::uint64_t value = 0;
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(celsius, 44);
    EXPECT_EQ(sources[0]->getUsage(value), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(value, 3U);
    EXPECT_EQ(sources[0]->getTotalMemory(value), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(value, 0U) << "12 GiB, of which 32 bits hold nothing";
    EXPECT_EQ(sources[0]->getFreeMemory(value), VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(value, 3ULL << 30) << "11 GiB modulo 4 GiB";
}

TEST(DisplayDriverLibrary, IsTheOneThatTheVendorsNameMeans) {
    void* library = platform::openDisplayDriverLibrary(platform::nvapiLibrary());
    ASSERT_NE(library, nullptr);
    EXPECT_NE(platform::librarySymbol(library, "nvapi_QueryInterface"), nullptr);
    platform::closeLibrary(library);
}

TEST(DisplayDriverLibrary, IsNeverNamedByAPath) {
    EXPECT_EQ(platform::openDisplayDriverLibrary(VEXIL_STAND_IN), nullptr);
    EXPECT_EQ(platform::openDisplayDriverLibrary(std::string("./") + platform::nvapiLibrary()), nullptr);
    EXPECT_EQ(platform::openDisplayDriverLibrary(""), nullptr);
}

TEST(DisplayDriverLibrary, IsNothingWhereNoDriverInstalledIt) {
    EXPECT_EQ(platform::openDisplayDriverLibrary("vexil_no_such_library"), nullptr);
}

TEST(DisplayDriverLibrary, IsNoneThatStandsBesideTheProgram) {
    const auto program = std::filesystem::path(VEXIL_STAND_IN).parent_path();
    ASSERT_TRUE(std::filesystem::exists(program / VEXIL_LIBRARY_BESIDE));
    EXPECT_EQ(platform::openDisplayDriverLibrary(VEXIL_LIBRARY_BESIDE), nullptr);
}

TEST(DisplayDriverLibrary, IsNoneOfTheWorkingDirectory) {
    const auto folder = testFolder();
    std::filesystem::copy_file(VEXIL_STAND_IN, folder / VEXIL_LIBRARY_BESIDE);
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    EXPECT_EQ(platform::openDisplayDriverLibrary(VEXIL_LIBRARY_BESIDE), nullptr);
    std::filesystem::current_path(before);
}

TEST(NvapiLoading, IsTheSuitesLoadersForTheSources) { EXPECT_EQ(&systemNvapi().loader, get_module()); }

} // namespace
} // namespace vexil::tests
