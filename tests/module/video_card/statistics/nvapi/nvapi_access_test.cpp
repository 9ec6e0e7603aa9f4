#include "module/video_card/statistics/nvapi/nvapi_access.h"

#include "nvapi_loader.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace vexil::tests {
namespace {

namespace nvapi = platform::nvapi;
using module::video_card::NvapiAccess;

/// The numbers and sizes as NVIDIA's library knows them, spelt out once more.
TEST(NvapiInterface, HasTheVersionWordsOfItsRecords) {
    EXPECT_EQ(nvapi::versionOf<nvapi::ThermalSettings>, 0x00020044U);
    EXPECT_EQ(nvapi::versionOf<nvapi::MemoryInfo>, 0x00030020U);
    EXPECT_EQ(nvapi::versionOf<nvapi::Usage>, 0x00010088U);
}

TEST(NvapiInterface, HasTheNumbersOfItsFunctions) {
    EXPECT_EQ(nvapi::id::initialize, 0x0150E828U);
    EXPECT_EQ(nvapi::id::unload, 0xD22BDD7EU);
    EXPECT_EQ(nvapi::id::enumPhysicalGpus, 0xE5AC921FU);
    EXPECT_EQ(nvapi::id::getBusId, 0x1BE0B8E5U);
    EXPECT_EQ(nvapi::id::getBusSlotId, 0x2A0A350FU);
    EXPECT_EQ(nvapi::id::getThermalSettings, 0xE3640A56U);
    EXPECT_EQ(nvapi::id::getMemoryInfo, 0x07F9B368U);
    EXPECT_EQ(nvapi::id::getUsage, 0x189A1FDFU);
}

TEST(NvapiAccess, AnswersThatTheLibraryIsNotFound) {
    NvapiFixture nvidia;
    nvidia.loader.missingLibraries = {"the driver's"};
    EXPECT_EQ(nvidia.access.initialize(), -2);
    EXPECT_EQ(nvidia.loader.events, Events{"miss the driver's"});
}

TEST(NvapiAccess, AnswersThatThereIsNoImplementationWithoutTheQueryFunction) {
    NvapiFixture nvidia;
    nvidia.loader.exportsQuery = false;
    EXPECT_EQ(nvidia.access.initialize(), -3);
    EXPECT_EQ(nvidia.loader.events, (Events{"load the driver's", "release"}));
}

TEST(NvapiAccess, AnswersThatThereIsNoImplementationWithoutTheFunctionThatStarts) {
    NvapiFixture nvidia;
    nvidia.loader.replacements[nvapi::id::initialize] = nullptr;
    EXPECT_EQ(nvidia.access.initialize(), -3);
    EXPECT_EQ(nvidia.loader.count("release"), 1);
}

TEST(NvapiAccess, PassesTheStatusOfAFailedStartOnAndReleasesTheLibrary) {
    NvapiFixture nvidia;
    nvidia.loader.initializeStatus = -6;
    EXPECT_EQ(nvidia.access.initialize(), -6);
    EXPECT_EQ(nvidia.loader.events, (Events{"load the driver's", "initialize", "release"}));
    EXPECT_EQ(nvidia.access.unload(), -4) << "a failed start takes no reference";
}

TEST(NvapiAccess, StartsWithTheFirstReferenceAndEndsWithTheLast) {
    NvapiFixture nvidia;
    EXPECT_EQ(nvidia.access.initialize(), 0);
    EXPECT_EQ(nvidia.access.initialize(), 0);
    EXPECT_EQ(nvidia.access.unload(), 0);
    EXPECT_EQ(nvidia.loader.events, (Events{"load the driver's", "initialize"}));
    EXPECT_EQ(nvidia.access.unload(), 0);
    EXPECT_EQ(nvidia.loader.events, (Events{"load the driver's", "initialize", "unload", "release"}));
    EXPECT_EQ(nvidia.access.unload(), -4);
    EXPECT_EQ(nvidia.access.initialize(), 0) << "and starts afresh";
    EXPECT_EQ(nvidia.loader.count("initialize"), 2);
    nvidia.access.unload();
}

TEST(NvapiAccess, AnswersThatItIsNotInitializedWithoutAReference) {
    NvapiFixture nvidia;
    std::array<nvapi::GpuHandle, 64> gpus{};
    std::uint32_t number = 0;
    EXPECT_EQ(nvidia.access.enumPhysicalGpus(gpus, number), -4);
    EXPECT_EQ(nvidia.access.getBusId(gpus[0], number), -4);
}

TEST(NvapiAccess, AnswersThatThereIsNoImplementationOfEachFunctionThatIsMissing) {
    const auto ask = [](NvapiAccess& access, std::uint32_t id) {
        std::array<nvapi::GpuHandle, 64> gpus{};
        std::uint32_t number = 0;
        nvapi::ThermalSettings settings{};
        nvapi::MemoryInfo info{};
        switch (id) {
        case nvapi::id::enumPhysicalGpus:
            return access.enumPhysicalGpus(gpus, number);
        case nvapi::id::getBusId:
            return access.getBusId(gpus[0], number);
        case nvapi::id::getBusSlotId:
            return access.getBusSlotId(gpus[0], number);
        case nvapi::id::getThermalSettings:
            return access.getThermalSettings(gpus[0], 15, settings);
        default:
            return access.getMemoryInfo(gpus[0], info);
        }
    };
    for (const auto id : {nvapi::id::enumPhysicalGpus, nvapi::id::getBusId, nvapi::id::getBusSlotId,
                          nvapi::id::getThermalSettings, nvapi::id::getMemoryInfo}) {
        NvapiFixture nvidia;
        nvidia.loader.replacements[id] = nullptr;
        ASSERT_EQ(nvidia.access.initialize(), 0);
        EXPECT_EQ(ask(nvidia.access, id), -3) << std::hex << id;
        nvidia.access.unload();
    }
}

TEST(NvapiAccess, EndsWithoutAFunctionThatEnds) {
    NvapiFixture nvidia;
    nvidia.loader.replacements[nvapi::id::unload] = nullptr;
    ASSERT_EQ(nvidia.access.initialize(), 0);
    EXPECT_EQ(nvidia.access.unload(), 0);
    EXPECT_EQ(nvidia.loader.count("release"), 1);
}

TEST(NvapiAccess, AsksForEachFunctionOnce) {
    NvapiFixture nvidia;
    simulated::setNvapiMachine({{}, {healthyGpu()}});
    ASSERT_EQ(nvidia.access.initialize(), 0);
    std::array<nvapi::GpuHandle, 64> gpus{};
    std::uint32_t number = 0;
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(nvidia.access.enumPhysicalGpus(gpus, number), 0);
        EXPECT_EQ(nvidia.access.getBusId(gpus[0], number), 0);
    }
    EXPECT_EQ(nvidia.loader.queries[nvapi::id::enumPhysicalGpus], 1);
    EXPECT_EQ(nvidia.loader.queries[nvapi::id::getBusId], 1);
    nvidia.access.unload();
}

TEST(NvapiAccess, KeepsTheReferenceThatTheDriverRefusesToEnd) {
    NvapiFixture nvidia;
    ASSERT_EQ(nvidia.access.initialize(), 0);
    nvidia.loader.unloadStatus = -1;
    EXPECT_EQ(nvidia.access.unload(), -1);
    EXPECT_EQ(nvidia.loader.count("release"), 0);
    nvidia.loader.unloadStatus = 0;
    EXPECT_EQ(nvidia.access.unload(), 0);
}

/// A function of the driver that stays inside until it is let go.
struct Gate {
    std::atomic<bool> entered = false;
    std::atomic<bool> open = false;

    void pass() {
        entered = true;
        while (!open) {
            std::this_thread::yield();
        }
    }
    void waitUntilEntered() const {
        while (!entered) {
            std::this_thread::yield();
        }
    }
};
Gate* gate = nullptr;

nvapi::Status slowBusId(nvapi::GpuHandle, std::uint32_t* bus) {
    gate->pass();
    *bus = 9;
    return nvapi::ok;
}

nvapi::Status slowUnload() {
    gate->pass();
    return nvapi::ok;
}

TEST(NvapiAccess, RefusesToDropTheLastReferenceWhileACallIsInProgress) {
    NvapiFixture nvidia;
    Gate only;
    gate = &only;
    nvidia.loader.replacements[nvapi::id::getBusId] = addressOf(slowBusId);
    ASSERT_EQ(nvidia.access.initialize(), 0);
    ASSERT_EQ(nvidia.access.initialize(), 0);
    std::thread caller([&] {
        std::uint32_t bus = 0;
        EXPECT_EQ(nvidia.access.getBusId(nullptr, bus), 0);
        EXPECT_EQ(bus, 9U);
    });
    only.waitUntilEntered();
    EXPECT_EQ(nvidia.access.unload(), 0) << "not the last one";
    EXPECT_EQ(nvidia.access.unload(), -209);
    EXPECT_EQ(nvidia.loader.count("unload"), 0);
    only.open = true;
    caller.join();
    EXPECT_EQ(nvidia.access.unload(), 0) << "the reference stayed";
}

TEST(NvapiAccess, LetsACallWaitForAnUnloadForASecondAndThenFail) {
    NvapiFixture nvidia;
    Gate only;
    gate = &only;
    nvidia.loader.replacements[nvapi::id::unload] = addressOf(slowUnload);
    ASSERT_EQ(nvidia.access.initialize(), 0);
    std::thread unloader([&] { EXPECT_EQ(nvidia.access.unload(), 0); });
    only.waitUntilEntered();
    const auto start = std::chrono::steady_clock::now();
    std::uint32_t bus = 0;
    EXPECT_EQ(nvidia.access.getBusId(nullptr, bus), -1);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, std::chrono::milliseconds(1000)) << "ten waits";
    EXPECT_LT(waited, std::chrono::milliseconds(1900));
    only.open = true;
    unloader.join();
}

TEST(NvapiAccess, LetsACallGoOnWhenAnUnloadHasEndedInTime) {
    NvapiFixture nvidia;
    Gate only;
    gate = &only;
    nvidia.loader.replacements[nvapi::id::unload] = addressOf(slowUnload);
    ASSERT_EQ(nvidia.access.initialize(), 0);
    std::thread unloader([&] { EXPECT_EQ(nvidia.access.unload(), 0); });
    only.waitUntilEntered();
    std::thread opener([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        only.open = true;
    });
    std::uint32_t bus = 0;
    EXPECT_EQ(nvidia.access.getBusId(nullptr, bus), -4) << "it finds NVAPI ended, and no longer ending";
    unloader.join();
    opener.join();
}

TEST(NvapiAccess, SurvivesReferencesAndCallsFromManyThreads) {
    NvapiFixture nvidia;
    simulated::setNvapiMachine({{}, {healthyGpu()}});
    nvidia.loader.replacements[nvapi::id::initialize] = addressOf(+[]() -> nvapi::Status { return 0; });
    nvidia.loader.replacements[nvapi::id::unload] = addressOf(+[]() -> nvapi::Status { return 0; });
    std::atomic<int> strange = 0;
    const auto work = [&] {
        for (int round = 0; round < 2000; ++round) {
            std::array<nvapi::GpuHandle, 64> gpus{};
            std::uint32_t count = 0;
            strange += nvidia.access.initialize() != 0;
            strange += nvidia.access.enumPhysicalGpus(gpus, count) != 0 || count != 1;
            const auto status = nvidia.access.unload();
            // One refused because of another thread's call leaves its reference to be given back here.
            if (status == nvapi::unloadRefused) {
                while (nvidia.access.unload() == nvapi::unloadRefused) {
                }
            } else {
                strange += status != 0;
            }
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(strange, 0);
    EXPECT_EQ(nvidia.access.unload(), -4) << "no reference is left over";
}

} // namespace
} // namespace vexil::tests
