#include "module/video_card/direct3d/direct3d_api.h"
#include "module/video_card/direct3d/math_operations/math_op_test.h"
#include "support/card_under_test.h"
#include "support/lock_at_reset.h"
#include "support/staged_math_op_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

// The two looks of a run at its card, and the card's lock from the second look on.
namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::direct3dApi;
using module::video_card::Direct3DApi;
using module::video_card::Dx11Context;
using module::video_card::exchangeDirect3DApi;
using testing::ElementsAre;
using testing::IsEmpty;

/// Starts a run beside the caller, who holds the card's lock, and returns when it waits for that: past its
/// first look for a stop, with the device in its hand.
std::future<std::uint8_t> startRun(CardUnderTest& card, StagedTest& test) {
    auto running = std::async(std::launch::async, [&] { return card.run(test); });
    while (card.device.use_count() == 1) {
        std::this_thread::yield();
    }
    return running;
}

TEST(MathOpLooks, DoesNotReachADeviceThatGoesBetweenItsTwoLooks) {
    CardUnderTest card;
    StagedTest test;
    std::future<std::uint8_t> running;
    {
        const auto lock = card.device->lock();
        running = startRun(card, test);
        card.device.reset();
    }
    EXPECT_EQ(running.get(), TestResult::DeviceUnavailable);
    EXPECT_THAT(test.run, IsEmpty());
    EXPECT_THAT(card.reporter.events, IsEmpty());
}

TEST(MathOpLooks, StopsBetweenItsLookAndTheFirstStageAndResetsTheDevice) {
    CardUnderTest card;
    StagedTest test;
    std::future<std::uint8_t> running;
    {
        const auto lock = card.device->lock();
        running = startRun(card, test);
        card.cancel = 1;
    }
    EXPECT_EQ(running.get(), TestResult::NotCompleted);
    EXPECT_THAT(test.run, IsEmpty());
    EXPECT_THAT(card.reporter.events, IsEmpty());
    EXPECT_THAT(card.log->take(),
                ElementsAre("ClearState()", "Flush()", testing::StartsWith("D3D11CreateDevice")));
}

/// In front of the function that makes devices: a reset gives the card its first device again, so that very
/// many runs take little time.
class SameDeviceAgain {
public:
    explicit SameDeviceAgain(const Dx11Context& first) {
        first_ = &first;
        before_ = exchangeDirect3DApi({direct3dApi().createFactory, create});
    }
    SameDeviceAgain(const SameDeviceAgain&) = delete;
    SameDeviceAgain& operator=(const SameDeviceAgain&) = delete;
    ~SameDeviceAgain() { exchangeDirect3DApi(before_); }

private:
    static HRESULT WINAPI create(IDXGIAdapter*, D3D_DRIVER_TYPE, HMODULE, UINT, const D3D_FEATURE_LEVEL*,
                                 UINT, UINT, ID3D11Device** device, D3D_FEATURE_LEVEL*,
                                 ID3D11DeviceContext** context) {
        *device = first_->device.get();
        (*device)->AddRef();
        *context = first_->context.get();
        (*context)->AddRef();
        return S_OK;
    }

    static inline const Dx11Context* first_ = nullptr;
    Direct3DApi before_;
};

/// One run and another thread wait for the card at the same time; the other takes its Direct3D away as soon
/// as it is let in, and it is given back at the end. The result of the run.
std::uint8_t runBesideATaker(CardUnderTest& card, StagedTest& test) {
    std::unique_ptr<Dx11Context> taken;
    std::future<std::uint8_t> running;
    std::future<void> taking;
    {
        const auto lock = card.device->lock();
        running = startRun(card, test);
        taking = std::async(std::launch::async, [&] { taken = std::move(card.device->lock().slot()); });
        // The end of the run's first look wakes the taker only if it sleeps in front of the lock by then.
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    const auto result = running.get();
    taking.get();
    card.device->lock().slot() = std::move(taken);
    return result;
}

TEST(MathOpLooks, SayNothingOfACardThatLosesItsDirect3DBetweenThem) {
    CardUnderTest card;
    const auto first = card.device->dx11Context();
    const SameDeviceAgain api(first);
    bool isSeen = false;
    // Nothing can be made to happen between the two looks, but the taker comes there in one run of some.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!isSeen && !HasFailure() && std::chrono::steady_clock::now() < end) {
        StagedTest test;
        card.reporter.events.clear();
        const auto result = runBesideATaker(card, test);
        const auto calls = card.log->take();
        if (result == TestResult::Passed) {
            EXPECT_THAT(card.reporter.events, IsEmpty());
            continue;
        }
        EXPECT_EQ(result, TestResult::NotSupported);
        EXPECT_THAT(test.run, IsEmpty());
        EXPECT_THAT(calls, IsEmpty());
        isSeen = card.reporter.events.empty();
        EXPECT_THAT(card.reporter.events,
                    testing::AnyOf(IsEmpty(), ElementsAre("progress 100",
                                                          "report 0 TEST_NOT_SUPPORTED_IN_THIS_DEVICE")));
    }
    EXPECT_TRUE(isSeen);
}

TEST(MathOpLooks, HoldsTheCardsLockInEveryStage) {
    CardUnderTest card;
    StagedTest test;
    std::vector<std::future<void>> others;
    for (auto& stage : test.stages) {
        stage = [&] {
            others.push_back(std::async(std::launch::async, [&] { const auto lock = card.device->lock(); }));
            EXPECT_EQ(others.back().wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
            return TestResult::Passed;
        };
    }
    EXPECT_EQ(card.run(test), TestResult::Passed);
    ASSERT_EQ(others.size(), 3U);
    for (const auto& other : others) {
        EXPECT_EQ(other.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    }
}

TEST(MathOpLooks, HoldTheCardsLockUntilItHasItsNextDevice) {
    CardUnderTest card;
    module::video_card::DirectComputeMathOpStandardTest test;
    const LockAtReset watch(card.device);
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_THAT(watch.held(), ElementsAre(true));
    EXPECT_TRUE(watch.isFreeAgain());
}

} // namespace
} // namespace vexil::tests
