#include "module/video_card/statistics/adl/adl_context.h"

#include "adl_loader.h"
#include "module/video_card/statistics/adl/adl_scanner.h"
#include "platform/library_names.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <optional>
#include <thread>

namespace vexil::tests {
namespace {

using namespace module::video_card;
namespace adl = platform::adl;

Events loadsOf(const std::set<std::string>& missing) {
    Events events;
    for (const std::string name : platform::adlLibraries()) {
        events.push_back((missing.contains(name) ? "miss " : "load ") + name);
        if (!missing.contains(name)) {
            break;
        }
    }
    return events;
}

std::string firstLibrary() { return platform::adlLibraries().front(); }

std::set<std::string> allLibraries() {
    const auto names = platform::adlLibraries();
    return {names.begin(), names.end()};
}

TEST(AdlContext, IsMadeOnceAndShared) {
    AdlFixture amd;
    const auto context = amd.contexts.get();
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(amd.contexts.get(), context);
    EXPECT_EQ(amd.loader.events, (Events{"load " + firstLibrary(), "create"}));
    EXPECT_EQ(amd.loader.flags, 1U);
    EXPECT_EQ(amd.loader.connectedOnly, 1);
    EXPECT_EQ(amd.loader.allocate, &allocateForAdl);
}

TEST(AdlContext, EndsTheLibraryAndThenReleasesItWithItsLastOwner) {
    AdlLoader loader;
    auto contexts = std::make_unique<ADLContexts>(loader);
    auto context = contexts->get();
    loader.events.clear();
    contexts.reset();
    EXPECT_TRUE(loader.events.empty());
    context.reset();
    EXPECT_EQ(loader.events, (Events{"destroy", "release"}));
}

TEST(AdlContext, IsNoneWithoutALibraryAndEachRequestTriesAgain) {
    AdlFixture amd;
    amd.loader.missingLibraries = allLibraries();
    EXPECT_EQ(amd.contexts.get(), nullptr);
    EXPECT_EQ(amd.loader.events, loadsOf(allLibraries()));
    EXPECT_EQ(amd.contexts.get(), nullptr);
    EXPECT_EQ(amd.loader.events.size(), 2 * allLibraries().size()) << "a failure is not remembered";
    amd.loader.missingLibraries.clear();
    EXPECT_NE(amd.contexts.get(), nullptr);
}

TEST(AdlContext, TakesTheLastLibraryOfTheListIfTheOthersAreMissing) {
    AdlFixture amd;
    auto missing = allLibraries();
    missing.erase(platform::adlLibraries().back());
    amd.loader.missingLibraries = missing;
    EXPECT_NE(amd.contexts.get(), nullptr);
    auto events = loadsOf(missing);
    events.emplace_back("create");
    EXPECT_EQ(amd.loader.events, events);
}

TEST(AdlContext, IsNoneWithoutAnyOneOfTheFunctionsThatEveryCardNeeds) {
    for (const char* name :
         {"ADL_Main_Control_Create", "ADL_Main_Control_Destroy", "ADL_Adapter_NumberOfAdapters_Get",
          "ADL_Adapter_Active_Get", "ADL_Adapter_AdapterInfo_Get", "ADL2_Overdrive_Caps"}) {
        AdlFixture amd;
        amd.loader.replacements[name] = nullptr;
        EXPECT_EQ(amd.contexts.get(), nullptr) << name;
        EXPECT_EQ(amd.loader.events, (Events{"load " + firstLibrary(), "release"})) << name;
    }
}

TEST(AdlContext, IsNoneIfTheLibraryDoesNotStart) {
    for (const std::int32_t status : {-1, 1}) {
        AdlFixture amd;
        amd.loader.createStatus = status;
        EXPECT_EQ(amd.contexts.get(), nullptr);
        EXPECT_EQ(amd.loader.events, (Events{"load " + firstLibrary(), "create", "release"}));
        amd.loader.createStatus = 0;
        EXPECT_NE(amd.contexts.get(), nullptr) << "a failure is not remembered";
    }
}

TEST(AdlContext, HasTheTableOfAGenerationOnlyWithAllItsFunctions) {
    struct Missing {
        const char* function;
        int generation;
    };
    for (const auto& [function, generation] : {Missing{"ADL_Overdrive5_ThermalDevices_Enum", 5},
                                               {"ADL_Overdrive5_Temperature_Get", 5},
                                               {"ADL_Overdrive5_CurrentActivity_Get", 5},
                                               {"ADL_Overdrive6_Temperature_Get", 6},
                                               {"ADL_Overdrive6_CurrentStatus_Get", 6},
                                               {"ADL2_OverdriveN_Temperature_Get", 7},
                                               {"ADL2_OverdriveN_PerformanceStatus_Get", 7},
                                               {"no function", 0}}) {
        AdlFixture amd;
        amd.loader.replacements[function] = nullptr;
        const auto context = amd.contexts.get();
        ASSERT_NE(context, nullptr) << function;
        EXPECT_EQ(context->overdrive5 == nullptr, generation == 5) << function;
        EXPECT_EQ(context->overdrive6 == nullptr, generation == 6) << function;
        EXPECT_EQ(context->overdriveN == nullptr, generation == 7) << function;
        EXPECT_NE(context->memory, nullptr) << function;
    }
}

TEST(AdlContext, AlwaysHasTheTableOfMemoryWhoseEntriesMayBeMissing) {
    AdlFixture amd;
    amd.loader.replacements = {{"ADL_Adapter_MemoryInfo_Get", nullptr},
                               {"ADL2_Adapter_VRAMUsage_Get", nullptr}};
    const auto context = amd.contexts.get();
    ASSERT_NE(context, nullptr);
    ASSERT_NE(context->memory, nullptr);
    EXPECT_EQ(context->memory->memoryInfoGet, nullptr);
    EXPECT_EQ(context->memory->vramUsageGet, nullptr);
}

TEST(AdlContext, IsOneForAllThreads) {
    AdlFixture amd;
    std::vector<std::shared_ptr<const ADLContext>> seen(4);
    std::vector<std::thread> threads;
    for (auto& context : seen) {
        threads.emplace_back([&context, &amd] { context = amd.contexts.get(); });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::ranges::count(seen, amd.contexts.get()), 4);
    EXPECT_EQ(amd.loader.count("create"), 1);
}

ADLContexts* asked = nullptr;

adl::Status askMeanwhile(std::int32_t*) {
    std::thread([] { EXPECT_NE(asked->get(), nullptr); }).join();
    return adl::error;
}

TEST(AdlContext, IsToBeHadByOthersWhileTheLibraryIsCalled) {
    AdlFixture amd;
    amd.loader.replacements["ADL_Adapter_NumberOfAdapters_Get"] = addressOf(askMeanwhile);
    asked = &amd.contexts;
    StatisticsSources sources;
    // Forever, were the context locked for the call.
    EXPECT_TRUE(ADLDeviceStatisticsScanner(amd.contexts).scan(sources).empty());
}

TEST(AdlAllocation, GivesFourBytesForEachUnit) {
    void* memory = allocateForAdl(1000);
    ASSERT_NE(memory, nullptr);
    std::memset(memory, 0x5A, 4000);
    void* other = allocateForAdl(1000);
    EXPECT_NE(memory, other);
    ::operator delete(memory);
    ::operator delete(other);
    void* nothing = allocateForAdl(0);
    EXPECT_NE(nothing, nullptr);
    ::operator delete(nothing);
}

TEST(AdlAllocation, FailsForACountWhoseSizeDoesNotFit) {
    EXPECT_EQ(allocateForAdl(-1), nullptr);
    EXPECT_EQ(allocateForAdl(std::numeric_limits<std::int32_t>::min()), nullptr);
}

} // namespace
} // namespace vexil::tests
