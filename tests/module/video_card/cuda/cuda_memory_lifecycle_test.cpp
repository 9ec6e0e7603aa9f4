// The life of one run of a memory test: the gates before it, the allocation, every way out.
#include "cuda_fixture.h"

#include "module/video_card/cuda/cuda_modulo_x_test.h"
#include "module/video_card/cuda/cuda_random_number_sequence_test.h"
#include "support/plain_test.h"

namespace vexil::tests {

namespace {

constexpr const char* aborted =
    "TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";
constexpr std::uint64_t mebibyte = 1U << 20;

using Events = std::vector<std::string>;
using Sizes = std::vector<std::uint64_t>;

} // namespace

class CudaMemoryLifecycle : public CudaTest {};

namespace {

/// A test whose body can be run by itself.
template <typename Test>
class BareBody final : public Test {
public:
    using Test::allocateTestMemory;
    using Test::runBody;
};

} // namespace

TEST_F(CudaMemoryLifecycle, PassesOnAHealthyCardAndLeavesNothingOnIt) {
    for (const CudaTestId id : allCudaTests) {
        SCOPED_TRACE(id);
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::Passed);
        EXPECT_TRUE(reporter.messages.empty());
        expectReleased();
        EXPECT_EQ(driver().state(0).retained, 0);
    }
}

TEST_F(CudaMemoryLifecycle, IsOfferedForACardThatCudaListsAndForNoOther) {
    for (const CudaTestId id : allCudaTests) {
        const auto test = makeCudaTest(id);
        EXPECT_TRUE(test->isSupported(device.get(), device));
        PlainDevice stranger("0000");
        EXPECT_FALSE(test->isSupported(&stranger, nullptr));
        EXPECT_EQ(test->id(), id);
        EXPECT_EQ(test->expectedDurationMinutes(), 1U);
        EXPECT_FALSE(test->requiresExclusiveRun());
        EXPECT_EQ(test->descriptor().group, "QUICK_TESTS");
    }
}

TEST_F(CudaMemoryLifecycle, SaysNothingAboutADeviceThatIsGoneOrNoVideoCard) {
    for (const CudaTestId id : allCudaTests) {
        auto gone = arguments();
        gone.device.reset();
        EXPECT_EQ(makeCudaTest(id)->execute(gone), core::TestResult::DeviceUnavailable);
        const auto stranger = std::make_shared<PlainDevice>("0000");
        auto wrong = arguments();
        wrong.device = stranger;
        EXPECT_EQ(makeCudaTest(id)->execute(wrong), core::TestResult::DeviceUnavailable);
    }
    EXPECT_EQ(reporter.events, Events{});
}

TEST_F(CudaMemoryLifecycle, LooksForTheDeviceBeforeItLooksForAStop) {
    cancel = 1;
    for (const CudaTestId id : memoryTests) {
        auto gone = arguments();
        gone.device.reset();
        EXPECT_EQ(makeCudaTest(id)->execute(gone), core::TestResult::DeviceUnavailable);
    }
    EXPECT_EQ(reporter.events, Events{});
}

TEST_F(CudaMemoryLifecycle, LooksForAStopBeforeItLooksForTheCudaRecord) {
    device = deviceWithoutCuda();
    cancel = 1;
    for (const CudaTestId id : memoryTests) {
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.events, (Events{"100", aborted}));
    }
}

TEST_F(CudaMemoryLifecycle, LooksForTheCudaRecordBeforeItAsksForTheDriver) {
    device = deviceWithoutCuda();
    configure(cardWith(16), 11020);
    for (const CudaTestId id : allCudaTests) {
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::NotSupported);
        EXPECT_EQ(reporter.events, (Events{"100", "TEST_NOT_SUPPORTED_IN_THIS_DEVICE"}));
    }
}

TEST_F(CudaMemoryLifecycle, AsksTheCardForNothingWhenItIsStoppedAtTheDriverGate) {
    for (const CudaTestId id : memoryTests) {
        cancel = 0;
        Events calls;
        driver().observe([&](const char* call) {
            calls.emplace_back(call);
            cancel = calls.back() == "cuDriverGetVersion" ? 1 : cancel;
        });
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        EXPECT_EQ(calls, Events{"cuDriverGetVersion"});
    }
}

TEST_F(CudaMemoryLifecycle, ExplainsAStopOfTheBodyThatHasBothCauses) {
    for (const CudaTestId id : memoryTests) {
        configureWithoutLaunches(16);
        reporter = {};
        cancel = 0;
        events->flags = 0;
        at("cuCtxSynchronize", 1, [&] {
            cancel = 1;
            events->flags = 0x20;
        });
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        // The event's message comes with a progress of its own, before that of the end of the run.
        const Events tail(reporter.events.end() - 3, reporter.events.end());
        EXPECT_EQ(tail, (Events{"100", aborted, "100"}));
        expectReleased();
    }
}

TEST_F(CudaMemoryLifecycle, CannotRunOnACardThatCudaDoesNotList) {
    device = deviceWithoutCuda();
    for (const CudaTestId id : allCudaTests) {
        reporter = {};
        EXPECT_FALSE(makeCudaTest(id)->isSupported(device.get(), device));
        EXPECT_EQ(run(id), core::TestResult::NotSupported);
        EXPECT_EQ(reporter.events, (Events{"100", "TEST_NOT_SUPPORTED_IN_THIS_DEVICE"}));
    }
}

TEST_F(CudaMemoryLifecycle, NeedsADriverOf11Point3) {
    for (const auto& [version, goes] : {std::pair{11020, false}, {11030, true}, {12000, true}, {0, false}}) {
        for (const CudaTestId id : allCudaTests) {
            SCOPED_TRACE(testing::Message() << "version " << version << ", test " << id);
            configure(cardWith(16), version);
            reporter = {};
            EXPECT_EQ(run(id), goes ? core::TestResult::Passed : core::TestResult::NotCompleted);
            if (!goes) {
                EXPECT_EQ(reporter.events, (Events{"100", "CUDA_DRIVER_INCOMPATIBLE"}));
            }
            expectReleased();
        }
    }
}

TEST_F(CudaMemoryLifecycle, ExplainsAStopBeforeTheBodyWhateverCausedIt) {
    struct Point {
        const char* call; ///< empty: before the run
        unsigned nth;
        Sizes left;
    };
    const Point points[] = {
        {"", 0, {}},
        {"cuDriverGetVersion", 1, {}},
        {"cuDeviceTotalMem_v2", 1, {}},
        // The one way out that leaves the allocation in place.
        {"cuMemAlloc_v2", 2, {20 * mebibyte, 1}},
    };
    for (const CudaTestId id : memoryTests) {
        for (const Point& point : points) {
            for (const bool byEvent : {false, true}) {
                SCOPED_TRACE(testing::Message()
                             << "test " << id << " at " << point.call << " by event " << byEvent);
                configure(cardWith(20));
                reporter = {};
                const auto stop = [&] { byEvent ? void(events->flags = 0x01) : void(cancel = 1); };
                if (point.nth == 0) {
                    stop();
                } else {
                    at(point.call, point.nth, stop);
                }
                EXPECT_EQ(run(id), core::TestResult::NotCompleted);
                EXPECT_EQ(reporter.events, (Events{"100", aborted}));
                EXPECT_EQ(driver().state(0).allocations, point.left);
                EXPECT_EQ(driver().state(0).launches, 0U);
                cancel = 0;
                events->flags = 0;
            }
        }
    }
}

TEST_F(CudaMemoryLifecycle, StopsSilentlyForTheUserAtEveryPollOfTheBody) {
    for (const CudaTestId id : memoryTests) {
        const unsigned launches = launchesOf(id);
        for (unsigned nth = 1; nth <= launches; ++nth) {
            SCOPED_TRACE(testing::Message() << "test " << id << " at launch " << nth);
            configureWithoutLaunches(17);
            reporter = {};
            cancel = 0;
            at("cuCtxSynchronize", nth, [&] { cancel = 1; });
            EXPECT_EQ(run(id), core::TestResult::NotCompleted);
            EXPECT_TRUE(reporter.messages.empty());
            EXPECT_EQ(reporter.progress.size(), nth + 1);
            EXPECT_EQ(driver().state(0).launches, nth);
            expectReleased();
        }
    }
}

TEST_F(CudaMemoryLifecycle, ExplainsASystemEventAtEveryPollOfTheBody) {
    for (const CudaTestId id : memoryTests) {
        const unsigned launches = launchesOf(id);
        for (unsigned nth = 1; nth <= launches; ++nth) {
            SCOPED_TRACE(testing::Message() << "test " << id << " at launch " << nth);
            configureWithoutLaunches(17);
            reporter = {};
            events->flags = 0;
            at("cuCtxSynchronize", nth, [&] { events->flags = 0x80; });
            EXPECT_EQ(run(id), core::TestResult::NotCompleted);
            EXPECT_EQ(reporter.messages, Events{aborted});
            EXPECT_EQ(driver().state(0).launches, nth);
            expectReleased();
        }
    }
}

TEST_F(CudaMemoryLifecycle, IsStoppedByTheBitsOfTheMaskAlone) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        const bool stops = bit < 8 && (0xEBU >> bit & 1U) != 0;
        for (const CudaTestId id : {address, standardMath}) {
            SCOPED_TRACE(testing::Message() << "bit " << bit << ", test " << id);
            configureWithoutLaunches(16);
            events->flags = 1U << bit;
            const auto result = run(id);
            if (stops) {
                EXPECT_EQ(result, core::TestResult::NotCompleted);
            } else {
                EXPECT_NE(result, core::TestResult::NotCompleted);
            }
        }
    }
}

template <typename Test>
class CudaBodyThatHoldsTheCard : public CudaTest {};

using BodiesThatHoldTheCard =
    testing::Types<module::video_card::CudaModuloXTest, module::video_card::CudaRandomNumberSequenceTest>;
TYPED_TEST_SUITE(CudaBodyThatHoldsTheCard, BodiesThatHoldTheCard);

TYPED_TEST(CudaBodyThatHoldsTheCard, UntilItsEndWhoeverElseGivesItUp) {
    this->configureWithoutLaunches(17);
    const std::weak_ptr<core::Device> card = this->device;
    BareBody<TypeParam> test;
    ASSERT_TRUE(test.allocateTestMemory({64 * mebibyte}));
    unsigned launches = 0;
    this->driver().observeLaunches([&](const simulated::cuda::CardLaunch&) {
        ++launches;
        this->device.reset();
        EXPECT_FALSE(card.expired()) << "launch " << launches;
    });
    EXPECT_EQ(test.runBody(this->arguments()), core::TestResult::Passed);
    EXPECT_GE(launches, 3U);
    EXPECT_TRUE(card.expired());
}

TEST_F(CudaMemoryLifecycle, RunsWithoutAnEventState) {
    events = nullptr;
    for (const CudaTestId id : allCudaTests) {
        EXPECT_EQ(run(id), core::TestResult::Passed);
    }
}

} // namespace vexil::tests
