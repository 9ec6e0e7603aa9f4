#include "module/video_card/statistics/nvapi/nvapi_scanner.h"

#include "module/video_card/adapter_record.h"
#include "nvapi_loader.h"
#include "platform/library_names.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexil::tests {
namespace {

using namespace module::video_card;
namespace nvapi = platform::nvapi;

class NvapiScanner : public testing::Test {
protected:
    StatisticsSources scan() {
        StatisticsSources sources;
        NvapiDeviceStatisticsScanner scanner(nvidia_.runtime);
        EXPECT_EQ(&scanner.scan(sources), &sources) << "the vector is also the result";
        return sources;
    }
    static bool matches(const VideoCardStatistics& source, const char* location) {
        AdapterRecord adapter;
        adapter.location = location;
        return source.matches(adapter);
    }

    NvapiFixture nvidia_;
};

TEST_F(NvapiScanner, HoldsAReferenceWhileItLives) {
    {
        const NvapiDeviceStatisticsScanner scanner(nvidia_.runtime);
        EXPECT_EQ(nvidia_.loader.count("initialize"), 1);
        EXPECT_EQ(nvidia_.loader.count("unload"), 0);
    }
    EXPECT_EQ(nvidia_.loader.count("unload"), 1);
}

TEST_F(NvapiScanner, ThrowsTheStatusAsAnIntegerIfNvapiCannotBeInitialised) {
    nvidia_.loader.missingLibraries = {"the driver's"};
    try {
        const NvapiDeviceStatisticsScanner scanner(nvidia_.runtime);
        FAIL() << "nothing thrown";
    } catch (int status) {
        EXPECT_EQ(status, -2);
    }
}

TEST_F(NvapiScanner, LeavesTheListEmptyInTheScanOfAllSourcesWithoutNvapi) {
    nvidia_.loader.initializeStatus = -6;
    StatisticsScans scans;
    scans.nvapi = [&](StatisticsSources& sources) {
        NvapiDeviceStatisticsScanner(nvidia_.runtime).scan(sources);
    };
    EXPECT_TRUE(scanStatistics(scans).nvapi.empty());
}

TEST_F(NvapiScanner, MakesASourceOfEveryGpu) {
    simulated::setNvapiMachine({{}, {healthyGpu(1), healthyGpu(10, 3)}});
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_TRUE(matches(*sources[0], "01:00.0"));
    EXPECT_TRUE(matches(*sources[1], "0a:03.0"));
}

TEST_F(NvapiScanner, LeavesASourceItsReferenceWhenItIsGone) {
    simulated::setNvapiMachine({{}, {healthyGpu()}});
    auto sources = scan();
    EXPECT_EQ(nvidia_.loader.count("unload"), 0);
    std::int64_t celsius = 0;
    EXPECT_EQ(sources[0]->getTemperature(celsius), VideoCardStatisticsStatus::Ok);
    sources.clear();
    EXPECT_EQ(nvidia_.loader.count("unload"), 1);
}

TEST_F(NvapiScanner, FindsNothingIfTheEnumerationFails) {
    simulated::NvapiSection library;
    library.statuses = {{"NvAPI_EnumPhysicalGPUs", -1}};
    simulated::setNvapiMachine({library, {healthyGpu()}});
    EXPECT_TRUE(scan().empty());
}

TEST_F(NvapiScanner, SkipsAGpuThatDoesNotTellItsBusOrSlot) {
    auto noBus = healthyGpu(1);
    noBus.statuses = {{"NvAPI_GPU_GetBusId", -1}};
    auto noSlot = healthyGpu(2);
    noSlot.statuses = {{"NvAPI_GPU_GetBusSlotId", -1}};
    simulated::setNvapiMachine({{}, {noBus, noSlot, healthyGpu(3)}});
    const auto sources = scan();
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_TRUE(matches(*sources[0], "03:00.0"));
}

TEST_F(NvapiScanner, SkipsEveryGpuIfTheUsageFunctionIsMissing) {
    nvidia_.loader.replacements[nvapi::id::getUsage] = nullptr;
    simulated::setNvapiMachine({{}, {healthyGpu(1), healthyGpu(2)}});
    EXPECT_TRUE(scan().empty());
    EXPECT_EQ(nvidia_.access.unload(), -4) << "no reference is left";
}

TEST_F(NvapiScanner, SkipsEveryGpuIfTheLibraryCannotBeLoadedASecondTime) {
    nvidia_.loader.missingLibraries = {platform::nvapiLibrary()};
    simulated::setNvapiMachine({{}, {healthyGpu()}});
    EXPECT_TRUE(scan().empty());
}

TEST_F(NvapiScanner, SkipsAGpuForAnIntegerOrATextAndLetsEverythingElseOut) {
    simulated::setNvapiMachine({{}, {healthyGpu(1), healthyGpu(2)}});
    int loads = 0;
    std::function<void()> firstTime;
    nvidia_.loader.onLoad = [&](const std::string& name) {
        if (name == platform::nvapiLibrary() && loads++ == 0) {
            firstTime();
        }
    };
    for (const std::function<void()>& thrown :
         {std::function<void()>([] { throw 5; }), std::function<void()>([] { throw std::string("text"); })}) {
        loads = 0;
        firstTime = thrown;
        const auto sources = scan();
        ASSERT_EQ(sources.size(), 1U);
        EXPECT_TRUE(matches(*sources[0], "02:00.0"));
    }
    loads = 0;
    firstTime = [] { throw std::runtime_error("not one of the two"); };
    EXPECT_THROW(scan(), std::runtime_error);
    EXPECT_EQ(nvidia_.access.unload(), -4) << "no reference is left";
}

TEST_F(NvapiScanner, TakesNoMoreThan64GpusWhateverTheCount) {
    simulated::NvapiSection library;
    library.gpuCount = 0xFFFFFFFF;
    std::vector<simulated::NvapiCardSection> gpus;
    for (std::uint32_t bus = 0; bus < 70; ++bus) {
        gpus.push_back(healthyGpu(bus));
    }
    simulated::setNvapiMachine({library, gpus});
    EXPECT_EQ(scan().size(), 64U);
}

bool handlesWereClear = false;
nvapi::Status lookAtHandles(nvapi::GpuHandle* gpus, std::uint32_t* count) {
    handlesWereClear =
        std::all_of(gpus, gpus + nvapi::maxGpus, [](nvapi::GpuHandle gpu) { return gpu == nullptr; });
    *count = 0;
    return nvapi::ok;
}

TEST_F(NvapiScanner, AsksWithClearHandles) {
    nvidia_.loader.replacements[nvapi::id::enumPhysicalGpus] = addressOf(lookAtHandles);
    EXPECT_TRUE(scan().empty());
    EXPECT_TRUE(handlesWereClear);
}

TEST_F(NvapiScanner, SkipsAGpuThatIsOnlyCounted) {
    simulated::NvapiSection library;
    library.gpuCount = 5;
    simulated::setNvapiMachine({library, {healthyGpu()}});
    EXPECT_EQ(scan().size(), 1U);
}

std::vector<std::string> questions;
nvapi::Status refuseBus(nvapi::GpuHandle, std::uint32_t*) {
    questions.emplace_back("bus");
    return nvapi::error;
}
nvapi::Status answerSlot(nvapi::GpuHandle, std::uint32_t*) {
    questions.emplace_back("slot");
    return nvapi::ok;
}

TEST_F(NvapiScanner, AsksAGpuForItsBusAndThenItsSlotWhateverTheFirstAnswers) {
    simulated::setNvapiMachine({{}, {healthyGpu()}});
    nvidia_.loader.replacements = {{nvapi::id::getBusId, addressOf(refuseBus)},
                                   {nvapi::id::getBusSlotId, addressOf(answerSlot)}};
    questions.clear();
    EXPECT_TRUE(scan().empty());
    EXPECT_EQ(questions, (std::vector<std::string>{"bus", "slot"}));
}

TEST_F(NvapiScanner, WorksWithEachFunctionMissingInTurn) {
    struct Missing {
        const char* name;
        std::size_t sources;
    };
    // Without a function for a value, the source stands and the value is unavailable.
    for (const auto& [name, sources] : {Missing{"NvAPI_EnumPhysicalGPUs", 0},
                                        {"NvAPI_GPU_GetBusId", 0},
                                        {"NvAPI_GPU_GetBusSlotId", 0},
                                        {"NvAPI_GPU_GetThermalSettings", 1},
                                        {"NvAPI_GPU_GetMemoryInfo", 1},
                                        {"usage", 0}}) {
        simulated::NvapiSection library;
        library.missingFunctions = {name};
        simulated::setNvapiMachine({library, {healthyGpu()}});
        const auto found = scan();
        ASSERT_EQ(found.size(), sources) << name;
        if (!found.empty()) {
            std::int64_t celsius = 0;
            std::uint64_t bytes = 0;
            const bool cold = found[0]->getTemperature(celsius) == VideoCardStatisticsStatus::Unavailable;
            const bool forgetful = found[0]->getFreeMemory(bytes) == VideoCardStatisticsStatus::Unavailable;
            EXPECT_NE(cold, forgetful) << name << ": one of the two is missing";
        }
    }
}

} // namespace
} // namespace vexil::tests
