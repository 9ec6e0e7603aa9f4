// How a memory test lets go of what it holds: at its end, at a stop, and when the card refuses.
#include "cuda_fixture.h"
#include "probed_test.h"

#include <bit>

namespace vexil::tests {

namespace {

constexpr std::uint64_t mebibyte = 1U << 20;

using Events = std::vector<std::string>;
using Sizes = std::vector<std::uint64_t>;

} // namespace

class CudaMemoryRelease : public CudaTest {};

TEST_F(CudaMemoryRelease, ReportsMemoryThatCannotBeReleasedAtEveryPollOfTheBody) {
    struct Failure {
        std::uint64_t nthFree;
        Sizes left;
    };
    // The flag is freed first, and a failure there leaves the block as well.
    const Failure failures[] = {{1, {17 * mebibyte, 1}}, {2, {17 * mebibyte}}};
    for (const CudaTestId id : memoryTests) {
        const unsigned launches = launchesOf(id);
        for (unsigned nth = 1; nth <= launches; ++nth) {
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

TEST_F(CudaMemoryRelease, ReportsMemoryThatCannotBeReleasedAtTheEnd) {
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

TEST_F(CudaMemoryRelease, LetsAWrongWordOutrankMemoryThatCannotBeReleased) {
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

TEST_F(CudaMemoryRelease, EndsWithoutVerdictWhenTheFlagCannotBeReadBack) {
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

TEST_F(CudaMemoryRelease, EndsWithoutVerdictAtEveryReadBackThatFails) {
    for (const CudaTestId id : memoryTests) {
        configureWithoutLaunches(17);
        std::uint64_t readBacks = 0;
        driver().observe([&](const char* call) { readBacks += std::string_view(call) == "cuMemcpyDtoH_v2"; });
        EXPECT_EQ(run(id), core::TestResult::Passed);
        EXPECT_GT(readBacks, 0U);
        for (std::uint64_t nth = 1; nth <= readBacks; ++nth) {
            for (const std::uint64_t nthFree : {0U, 1U, 2U}) {
                SCOPED_TRACE(testing::Message() << "test " << id << " at " << nth << ", free " << nthFree);
                auto card = cardWith(17);
                card.failingLaunches.first = 1;
                card.failingCopiesFromCard = {nth, 1};
                card.failingFrees.first = nthFree;
                configure(card);
                reporter = {};
                const bool released = nthFree == 0;
                EXPECT_EQ(run(id),
                          released ? core::TestResult::NotCompleted : core::TestResult::CleanupFailed);
                EXPECT_EQ(reporter.messages, Events{released ? "CUDA_MEMORY_TEST_COMMUNICATION_ERROR"
                                                             : "FAILED_TO_FREE_GPU_MEMORY"});
                EXPECT_EQ(driver().state(0).allocations.size(), nthFree == 0 ? 0U : 3 - nthFree);
            }
        }
    }
}

TEST_F(CudaMemoryRelease, EndsWithoutVerdictWhenTheRandomReferenceCannotBeUploaded) {
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

TEST_F(CudaMemoryRelease, BeginsWithNothingAllocatedAndTheFlagOfTheHost) {
    ProbedTest test;
    EXPECT_TRUE(test.patternOk_);
    EXPECT_EQ(test.devicePatternOk_, reinterpret_cast<std::uint8_t*>(&test.patternOk_));
    EXPECT_EQ(test.memoryBegin_, nullptr);
    EXPECT_EQ(test.testedMiB_, 0U);
}

TEST_F(CudaMemoryRelease, ForgetsItsMemoryAtTheReleaseButNotTheBoundsOfTheBlock) {
    ProbedTest test;
    EXPECT_EQ(test.execute(arguments()), core::TestResult::Passed);
    EXPECT_EQ(test.devicePatternOk_, nullptr);
    EXPECT_EQ(test.memoryBegin_, nullptr);
    EXPECT_EQ(test.memoryEnd_, test.begin + 20 * mebibyte);
    EXPECT_EQ(test.testedMiB_, 20U);
}

TEST_F(CudaMemoryRelease, KeepsTheBlockInHandWhenItCannotBeFreed) {
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

TEST_F(CudaMemoryRelease, ServesOneRunSinceTheFlagIsNeverSetBack) {
    auto broken = cardWith(16);
    broken.stuckBits.push_back({mebibyte, 3, true});
    configure(broken);
    const auto test = makeCudaTest(memoryFault);
    EXPECT_EQ(test->execute(arguments()), core::TestResult::Failed);
    configure(cardWith(16));
    EXPECT_EQ(test->execute(arguments()), core::TestResult::Failed) << "on a card that has nothing";
}

// A broken card delivers any byte.
TEST_F(CudaMemoryRelease, TakesAnyByteButZeroForAFlagThatIsSet) {
    for (const unsigned delivered : {0U, 1U, 2U, 0xFEU, 0xFFU}) {
        SCOPED_TRACE(delivered);
        configureWithoutLaunches(16);
        ProbedTest test;
        at("cuMemcpyDtoH_v2", 1, [&] { *test.devicePatternOk_ = static_cast<std::uint8_t>(delivered); });
        EXPECT_EQ(test.execute(arguments()),
                  delivered == 0 ? core::TestResult::Failed : core::TestResult::Passed);
        EXPECT_EQ(std::bit_cast<std::uint8_t>(test.patternOk_), delivered == 0 ? 0 : 1)
            << "as a bool is stored";
    }
}

} // namespace vexil::tests
