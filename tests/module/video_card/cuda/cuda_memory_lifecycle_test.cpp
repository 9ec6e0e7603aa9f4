// The life of one run of a memory test: the gates before it, the allocation, every way out.
#include "cuda_fixture.h"
#include "probed_test.h"

#include "support/plain_test.h"

namespace vexil::tests {

namespace {

constexpr const char* aborted =
    "TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";
constexpr std::uint64_t mebibyte = 1U << 20;

using Events = std::vector<std::string>;
using Sizes = std::vector<std::uint64_t>;

} // namespace

class CudaMemoryLifecycle : public CudaTest {
protected:
    /// Runs with everything but the launches, which do nothing: fast, and whatever is done around them
    /// happens.
    void configureWithoutLaunches(std::uint32_t testedMiB) {
        auto card = cardWith(testedMiB);
        card.failingLaunches.first = 1;
        configure(card);
    }
    /// How many launches, and so polls, an undisturbed run makes over 17 MiB.
    unsigned launchesOf(CudaTestId id) {
        cancel = 0;
        events->flags = 0;
        configureWithoutLaunches(17);
        EXPECT_EQ(run(id), core::TestResult::Passed);
        const auto launches = static_cast<unsigned>(driver().state(0).launches);
        EXPECT_GE(launches, 3U);
        return launches;
    }
    void expectReleased() { EXPECT_EQ(driver().state(0).allocations, Sizes{}); }
};

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

TEST_F(CudaMemoryLifecycle, RunsWithoutAnEventState) {
    events = nullptr;
    for (const CudaTestId id : allCudaTests) {
        EXPECT_EQ(run(id), core::TestResult::Passed);
    }
}

TEST_F(CudaMemoryLifecycle, ReportsMemoryThatCannotBeReleasedAtEveryPollOfTheBody) {
    struct Failure {
        std::uint64_t nthFree;
        Sizes left;
    };
    // The flag is freed first, and a failure there leaves the block as well.
    const Failure failures[] = {{1, {17 * mebibyte, 1}}, {2, {17 * mebibyte}}};
    for (const CudaTestId id : memoryTests) {
        const unsigned launches = launchesOf(id);
        for (unsigned nth = 1; nth <= launches; nth += launches > 10 ? 9 : 1) {
            for (const Failure& failure : failures) {
                for (const bool byEvent : {false, true}) {
                    SCOPED_TRACE(testing::Message() << "test " << id << " at launch " << nth);
                    auto card = cardWith(17);
                    card.failingLaunches.first = 1;
                    card.failingFrees = {failure.nthFree, 1};
                    configure(card);
                    reporter = {};
                    cancel = 0;
                    events->flags = 0;
                    at("cuCtxSynchronize", nth,
                       [&] { byEvent ? void(events->flags = 0x02) : void(cancel = 1); });
                    EXPECT_EQ(run(id), core::TestResult::CleanupFailed);
                    EXPECT_EQ(reporter.messages, Events{"FAILED_TO_FREE_GPU_MEMORY"});
                    EXPECT_EQ(driver().state(0).allocations, failure.left);
                    EXPECT_EQ(driver().state(0).retained, 1) << "the device is not reset";
                }
            }
        }
    }
}

TEST_F(CudaMemoryLifecycle, ReportsMemoryThatCannotBeReleasedAtTheEnd) {
    for (const CudaTestId id : memoryTests) {
        for (const std::uint64_t nthFree : {1U, 2U}) {
            auto card = cardWith(16);
            card.failingFrees.first = nthFree;
            configure(card);
            reporter = {};
            EXPECT_EQ(run(id), core::TestResult::CleanupFailed);
            EXPECT_EQ(reporter.messages, Events{"FAILED_TO_FREE_GPU_MEMORY"});
        }
    }
}

TEST_F(CudaMemoryLifecycle, LetsAWrongWordOutrankMemoryThatCannotBeReleased) {
    for (const CudaTestId id : memoryTests) {
        auto card = cardWith(16);
        // Every word that a test looks at, all bits: at 4 MiB, in each phase of the patterns.
        for (std::uint64_t word = 0; word < 20; ++word) {
            card.shortedWords.push_back({4 * mebibyte + word * 4, 8 * mebibyte});
        }
        card.failingFrees.first = 1;
        configure(card);
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::Failed) << id;
        EXPECT_EQ(reporter.messages, (Events{"FAILED_TO_FREE_GPU_MEMORY", "CUDA_MEMORY_TEST_PATTERN_FAIL"}));
    }
}

TEST_F(CudaMemoryLifecycle, EndsWithoutVerdictWhenTheFlagCannotBeReadBack) {
    constexpr const char* error = "CUDA_MEMORY_TEST_COMMUNICATION_ERROR";
    for (const CudaTestId id : memoryTests) {
        SCOPED_TRACE(id);
        auto card = cardWith(16);
        card.failingCopiesFromCard.first = 1;
        configure(card);
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        expectReleased();
        // Two of the tests show the progress before they add the message, the others after it.
        const Events tail(reporter.events.end() - 3, reporter.events.end());
        const bool progressFirst = id == moduloX || id == randomSequence;
        EXPECT_EQ(tail, progressFirst ? (Events{"100", error, "100"}) : (Events{error, "100", "100"}));

        card.failingFrees.first = 2;
        configure(card);
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::CleanupFailed);
        EXPECT_EQ(reporter.messages, Events{"FAILED_TO_FREE_GPU_MEMORY"});
    }
}

TEST_F(CudaMemoryLifecycle, EndsWithoutVerdictWhenTheRandomReferenceCannotBeUploaded) {
    auto card = cardWith(16);
    card.failingCopiesToCard.first = 2; // the flag is the first
    configure(card);
    EXPECT_EQ(run(randomSequence), core::TestResult::NotCompleted);
    EXPECT_EQ(reporter.events, (Events{"100", "CUDA_MEMORY_TEST_COMMUNICATION_ERROR", "100"}));
    expectReleased();
    EXPECT_EQ(driver().state(0).launches, 0U);

    card.failingFrees.first = 1;
    configure(card);
    reporter = {};
    EXPECT_EQ(run(randomSequence), core::TestResult::CleanupFailed);
    EXPECT_EQ(reporter.messages, Events{"FAILED_TO_FREE_GPU_MEMORY"});
}

TEST_F(CudaMemoryLifecycle, BeginsWithNothingAllocatedAndTheFlagOfTheHost) {
    ProbedTest test;
    EXPECT_TRUE(test.patternOk_);
    EXPECT_EQ(test.devicePatternOk_, reinterpret_cast<std::uint8_t*>(&test.patternOk_));
    EXPECT_EQ(test.memoryBegin_, nullptr);
    EXPECT_EQ(test.testedMiB_, 0U);
}

TEST_F(CudaMemoryLifecycle, ForgetsItsMemoryAtTheReleaseButNotTheBoundsOfTheBlock) {
    ProbedTest test;
    EXPECT_EQ(test.execute(arguments()), core::TestResult::Passed);
    EXPECT_EQ(test.devicePatternOk_, nullptr);
    EXPECT_EQ(test.memoryBegin_, nullptr);
    EXPECT_EQ(test.memoryEnd_, test.begin + 20 * mebibyte);
    EXPECT_EQ(test.testedMiB_, 20U);
}

TEST_F(CudaMemoryLifecycle, KeepsTheBlockInHandWhenItCannotBeFreed) {
    auto card = cardWith(16);
    card.failingFrees = {2, 1};
    configure(card);
    ProbedTest test;
    EXPECT_EQ(test.execute(arguments()), core::TestResult::CleanupFailed);
    EXPECT_EQ(test.devicePatternOk_, nullptr);
    EXPECT_EQ(test.memoryBegin_, test.begin);
    EXPECT_TRUE(test.releaseAll()) << "a flag that is gone is no obstacle";
    expectReleased();
}

TEST_F(CudaMemoryLifecycle, ServesOneRunSinceTheFlagIsNeverSetBack) {
    auto broken = cardWith(16);
    broken.stuckBits.push_back({mebibyte, 3, true});
    configure(broken);
    const auto test = makeCudaTest(memoryFault);
    EXPECT_EQ(test->execute(arguments()), core::TestResult::Failed);
    configure(cardWith(16));
    EXPECT_EQ(test->execute(arguments()), core::TestResult::Failed) << "on a card that has nothing";
}

} // namespace vexil::tests
