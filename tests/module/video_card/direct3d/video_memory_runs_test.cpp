#include "module/video_card/direct3d/extended_video_memory_test.h"
#include "module/video_card/direct3d/video_memory_test.h"
#include "support/card_under_test.h"
#include "support/grouping_locale.h"
#include "support/lock_at_reset.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <vector>

// Whole runs: who is refused, when a run stops, and what the two tests share.
namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::Dx11ExtendedVideoMemoryTest;
using module::video_card::Dx11VideoMemoryTest;
using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

constexpr std::uint64_t mebibyte = 1 << 20;
constexpr std::uint32_t spoilingEvent = 1;
constexpr const char* aborted =
    "report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";

class OtherDevice final : public core::Device {
public:
    [[nodiscard]] std::string id() const override { return {}; }
    [[nodiscard]] std::string displayName() const override { return {}; }
    [[nodiscard]] bool hasUdi() const override { return false; }
    [[nodiscard]] std::string udi() const override { return {}; }
    [[nodiscard]] std::vector<core::KeyValue> properties() const override { return {}; }
    [[nodiscard]] std::vector<std::string> notices() const override { return {}; }
    [[nodiscard]] bool isPresent() const override { return true; }
    void refresh() override {}
};

CardSetup setupWith(std::uint64_t freeMemory) {
    CardSetup setup;
    setup.freeMemory = freeMemory;
    return setup;
}

Lines imagesWritten(const Lines& calls) {
    Lines marks;
    for (const auto& line : calls) {
        if (line.starts_with("UpdateSubresource")) {
            marks.push_back(line.substr(line.find("null, ") + 6, 16));
        }
    }
    return marks;
}

TEST(VideoMemoryTest, HasTheDescriptorOfTheCatalogue) {
    const Dx11VideoMemoryTest quick;
    EXPECT_EQ(quick.id(), 1);
    EXPECT_EQ(quick.descriptor().name, "VIDEO_MEMORY_TEST");
    EXPECT_EQ(quick.descriptor().tooltip, "VIDEO_MEMORY_TEST_TOOL_TIP");
    EXPECT_EQ(quick.descriptor().group, "QUICK_TESTS");
    EXPECT_EQ(quick.descriptor().groupRank, 1);
    const Dx11ExtendedVideoMemoryTest extended;
    EXPECT_EQ(extended.id(), 4);
    EXPECT_EQ(extended.descriptor().name, "EXTENDED_VIDEO_MEMORY_TEST");
    EXPECT_EQ(extended.descriptor().tooltip, "EXTENDED_VIDEO_MEMORY_TEST_TOOL_TIP");
    EXPECT_EQ(extended.descriptor().group, "EXTENDED_TESTS");
    EXPECT_EQ(extended.descriptor().groupRank, 2);
}

TEST(VideoMemoryTest, IsOfferedForEveryCardAndOnlyReleasesTheHolder) {
    const Dx11VideoMemoryTest quick;
    const Dx11ExtendedVideoMemoryTest extended;
    auto holder = std::make_shared<OtherDevice>();
    EXPECT_TRUE(quick.isSupported(holder.get(), holder));
    EXPECT_TRUE(extended.isSupported(holder.get(), holder));
    EXPECT_TRUE(quick.isSupported(nullptr, nullptr));
    EXPECT_EQ(holder.use_count(), 1);
    EXPECT_FALSE(quick.requiresExclusiveRun());
    EXPECT_EQ(quick.expectedDurationMinutes(), 1U);
}

TEST(VideoMemoryTest, AnswersUnavailableForADeviceThatIsGone) {
    CardUnderTest card;
    card.arguments.device.reset();
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::DeviceUnavailable);
    EXPECT_THAT(card.reporter.events,
                ElementsAre("report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION", "progress 100"));
    EXPECT_THAT(card.log->take(), IsEmpty());
}

TEST(VideoMemoryTest, AnswersUnavailableForADeviceOfAnotherModule) {
    CardUnderTest card;
    const auto other = std::make_shared<OtherDevice>();
    card.arguments.device = other;
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::DeviceUnavailable);
    EXPECT_THAT(card.reporter.events,
                ElementsAre("report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION", "progress 100"));
}

TEST(VideoMemoryTest, RefusesACardWithoutDirect3D) {
    CardSetup setup;
    setup.direct3d.faults = {
        {simulated::Direct3DFault::Kind::failingCall, 1, "D3D11CreateDevice", 0, 0, 0x887A0004}};
    CardUnderTest card(setup);
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotSupported);
    EXPECT_THAT(card.reporter.events,
                ElementsAre("report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION", "progress 100"));
}

TEST(VideoMemoryTest, RefusesTheSystemsGenericDriver) {
    CardSetup setup;
    setup.name = "Microsoft Basic Display Adapter";
    CardUnderTest card(setup);
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotSupported);
    EXPECT_THAT(card.reporter.events,
                ElementsAre("progress 100", "report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION",
                            "report 0 NO_DRIVER"));
    EXPECT_THAT(card.log->take(), IsEmpty()) << "its device is left as it is";
}

TEST(VideoMemoryTest, RefusesNoCardWhoseNameOnlyHoldsThatOfTheGenericDriver) {
    auto setup = setupWith(4 * mebibyte);
    setup.name = "Microsoft Basic Display Adapter 2";
    CardUnderTest card(setup);
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
}

TEST(VideoMemoryTest, StopsAtOnceForASystemEvent) {
    CardUnderTest card;
    card.arguments.systemEvents->flags = spoilingEvent;
    card.arguments.device.reset();
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events, ElementsAre("progress 100", aborted));
    EXPECT_THAT(card.log->take(), IsEmpty());
}

TEST(VideoMemoryTest, StopsAtOnceForAUserWithoutAMessage) {
    CardUnderTest card;
    card.cancel = 1;
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events, ElementsAre("progress 100"));
}

TEST(VideoMemoryTest, StopsForAUserAfterTheSurfaceInHand) {
    CardUnderTest card(setupWith(40 * mebibyte));
    card.reporter.onProgress = [&](std::uint8_t percent) { card.cancel = percent >= 20 ? 1 : 0; };
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events,
                ElementsAre("progress 0", "progress 10", "progress 20", "progress 100"));
}

TEST(VideoMemoryTest, StopsForASystemEventAfterTheSurfaceInHand) {
    CardUnderTest card(setupWith(40 * mebibyte));
    card.reporter.onProgress = [&](std::uint8_t percent) {
        card.arguments.systemEvents->flags = percent >= 10 ? spoilingEvent : 0;
    };
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events, ElementsAre("progress 0", "progress 10", "progress 100", aborted));
}

TEST(VideoMemoryTest, StopsForAUserEvenAfterTheLastSurface) {
    CardUnderTest card(setupWith(4 * mebibyte));
    card.reporter.onProgress = [&](std::uint8_t percent) { card.cancel = percent == 100 ? 1 : 0; };
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events, ElementsAre("progress 0", "progress 100", "progress 100"));
}

TEST(VideoMemoryTest, CouldNotAllocateWithLessThanOneSurfaceFree) {
    CardUnderTest card(setupWith(4 * mebibyte - 1));
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events,
                ElementsAre("progress 0", "progress 100", "report 0 A_VIDEO_CARD_COULD_NOT_ALLOCATE_MEMORY"));
}

/// Answers the number of surfaces as it is told to.
class CountedTest final : public Dx11VideoMemoryTest {
public:
    CountedTest(std::uint32_t result, std::uint32_t count) : result_(result), count_(count) {}
    [[nodiscard]] std::uint32_t surfaceCount(core::Device* device, const core::TestRunArguments& arguments,
                                             std::uint32_t* count) const override {
        EXPECT_EQ(device, arguments.device.lock().get());
        *count = count_;
        return result_;
    }

private:
    std::uint32_t result_;
    std::uint32_t count_;
};

TEST(VideoMemoryTest, CouldNotAllocateWhereTheNumberOfSurfacesCannotBeTold) {
    for (const std::uint32_t result : {1U, 7U}) {
        CardUnderTest card(setupWith(40 * mebibyte));
        CountedTest test(result, 3);
        EXPECT_EQ(card.run(test), TestResult::NotCompleted);
        EXPECT_THAT(card.reporter.events, ElementsAre("progress 0", "progress 100",
                                                      "report 0 A_VIDEO_CARD_COULD_NOT_ALLOCATE_MEMORY"));
    }
}

TEST(VideoMemoryTest, AsksForTheNumberOfSurfacesBehindThePipeline) {
    CardUnderTest card(setupWith(40 * mebibyte));
    CountedTest test(0, 3);
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(card.reporter.events.back(), "report 0 TOTAL_SURFACES_TESTED: 3/3");
}

TEST(VideoMemoryTest, HoldsTheCardsLockForTheWholeRun) {
    CardUnderTest card(setupWith(8 * mebibyte));
    std::vector<std::future<void>> others;
    card.reporter.onProgress = [&](std::uint8_t) {
        others.push_back(std::async(std::launch::async, [&] { const auto lock = card.device->lock(); }));
        EXPECT_EQ(others.back().wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
    };
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(others.size(), 3U);
    for (const auto& other : others) {
        EXPECT_EQ(other.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    }
}

TEST(VideoMemoryTest, KeepsTheDeviceAliveThatAScanLetsGoOf) {
    CardUnderTest card(setupWith(8 * mebibyte));
    const std::weak_ptr<module::video_card::Device> device = card.device;
    card.reporter.onProgress = [&](std::uint8_t) { card.device.reset(); };
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(card.reporter.events.back(), "report 0 TOTAL_SURFACES_TESTED: 2/2");
    EXPECT_TRUE(device.expired());
}

TEST(VideoMemoryTest, RunsWithoutSystemEvents) {
    CardUnderTest card(setupWith(4 * mebibyte));
    card.arguments.systemEvents.reset();
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
}

TEST(VideoMemoryTest, ReadsTheSameTextInEveryLocale) {
    CardUnderTest card(setupWith(48 * mebibyte));
    const GroupingLocale locale;
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(card.reporter.events.back(), "report 0 TOTAL_SURFACES_TESTED: 12/12");
}

TEST(VideoMemoryTest, TestsFiftySurfacesOfACardWithAGibibyteFree) {
    CardUnderTest card(setupWith(1024 * mebibyte));
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    Lines expected = {"progress 0"};
    for (int i = 1; i <= 50; ++i) {
        expected.push_back("progress " + std::to_string(2 * i));
    }
    expected.emplace_back("report 0 TOTAL_SURFACES_TESTED: 50/50");
    EXPECT_THAT(card.reporter.events, testing::ElementsAreArray(expected));
}

TEST(VideoMemoryTest, GivesBackAllMemoryOfTheCard) {
    CardUnderTest card(setupWith(40 * mebibyte));
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(card.card->usedMemory, 0U);
}

/// Notes how much of a card's memory is in use when its next device is made.
class ResetWatch {
public:
    explicit ResetWatch(const simulated::SimulatedCard& card) {
        watched_ = &card;
        used_ = ~std::uint64_t{0};
        before_ = module::video_card::direct3dApi();
        module::video_card::exchangeDirect3DApi({before_.createFactory, create});
    }
    ResetWatch(const ResetWatch&) = delete;
    ResetWatch& operator=(const ResetWatch&) = delete;
    ~ResetWatch() { module::video_card::exchangeDirect3DApi(before_); }

    [[nodiscard]] std::uint64_t used() const { return used_; }

private:
    static HRESULT WINAPI create(IDXGIAdapter* adapter, D3D_DRIVER_TYPE driverType, HMODULE software,
                                 UINT flags, const D3D_FEATURE_LEVEL* levels, UINT levelCount, UINT version,
                                 ID3D11Device** device, D3D_FEATURE_LEVEL* level,
                                 ID3D11DeviceContext** context) {
        used_ = watched_->usedMemory;
        return before_.createDevice(adapter, driverType, software, flags, levels, levelCount, version, device,
                                    level, context);
    }

    static inline const simulated::SimulatedCard* watched_ = nullptr;
    static inline std::uint64_t used_ = 0;
    static inline module::video_card::Direct3DApi before_;
};

TEST(VideoMemoryTest, GivesItsMemoryBackBeforeTheCardGetsItsNextDevice) {
    CardUnderTest card(setupWith(40 * mebibyte));
    Dx11VideoMemoryTest test;
    const ResetWatch watch(*card.card);
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(watch.used(), 0U);
}

TEST(VideoMemoryTest, HoldsTheCardsLockUntilItHasItsNextDevice) {
    CardUnderTest card(setupWith(8 * mebibyte));
    Dx11VideoMemoryTest test;
    const LockAtReset watch(card.device);
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_THAT(watch.held(), ElementsAre(true));
    EXPECT_TRUE(watch.isFreeAgain());
}

TEST(VideoMemoryTest, RunsAgainAndAgainOnFreshDevices) {
    CardUnderTest card(setupWith(8 * mebibyte));
    Dx11VideoMemoryTest test;
    for (int i = 0; i < 3; ++i) {
        const auto before = card.device->dx11Context().device;
        EXPECT_EQ(card.run(test), TestResult::Passed);
        EXPECT_NE(card.device->dx11Context().device, before);
    }
}

TEST(ExtendedVideoMemoryTest, SharesItsFirstFiftyImagesWithTheQuickOne) {
    Lines images[2];
    for (const bool extended : {false, true}) {
        CardUnderTest card(setupWith(212 * mebibyte));
        Dx11VideoMemoryTest quickTest;
        Dx11ExtendedVideoMemoryTest extendedTest;
        EXPECT_EQ(card.run(extended ? static_cast<core::Test&>(extendedTest) : quickTest),
                  TestResult::Passed);
        EXPECT_EQ(card.reporter.events.back(), extended ? "report 0 TOTAL_SURFACES_TESTED: 53/53"
                                                        : "report 0 TOTAL_SURFACES_TESTED: 50/50");
        images[extended ? 1 : 0] = imagesWritten(card.log->take());
    }
    ASSERT_EQ(images[0].size(), 50U);
    ASSERT_EQ(images[1].size(), 53U);
    images[1].resize(50);
    EXPECT_EQ(images[0], images[1]);
}

TEST(ExtendedVideoMemoryTest, HasNoUpperLimitForTheNumberOfSurfacesThatItAsksFor) {
    auto setup = setupWith(std::uint64_t{0x80000000} << 22);
    setup.direct3d.memoryBudget = 21 * mebibyte; // 8 MiB of it for the target and the depth
    CardUnderTest card(setup);
    Dx11ExtendedVideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(card.reporter.events.back(), "report 0 TOTAL_SURFACES_TESTED: 3/3");
}

TEST(ExtendedVideoMemoryTest, TestsWhatALargeCardGivesBeforeItIsFull) {
    auto setup = setupWith(8192 * mebibyte);
    setup.direct3d.oneSurfaceMemory = true;
    setup.direct3d.faults = {{simulated::Direct3DFault::Kind::surfaceAllocation, 1900, "", 0, 0, 0x8007000E}};
    CardUnderTest card(setup);
    Dx11ExtendedVideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(card.reporter.events.back(), "report 0 TOTAL_SURFACES_TESTED: 1899/1899");
}

} // namespace
} // namespace vexil::tests
