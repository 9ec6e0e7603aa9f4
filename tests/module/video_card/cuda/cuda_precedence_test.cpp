// Which of two things decides that happen in the same launch: what the card does wrong, and a stop.
#include "cuda_fixture.h"

namespace vexil::tests {

namespace {

constexpr const char* aborted =
    "TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";
constexpr const char* patternFail = "CUDA_MEMORY_TEST_PATTERN_FAIL";

using Events = std::vector<std::string>;

/// In the second launch of a pass over 20 MiB.
constexpr std::uint64_t somewhere = (17U << 20) + 0x1230;

/// Where a word that flips on one of its reads is seen, and the progress that this launch shows.
struct Sight {
    CudaTestId test;
    std::uint64_t read;
    unsigned launch, progress;
};

// Two launches a pass. The block move reads each word while it moves it, and the word's turn in modulo-X
// comes with the offset 4.
constexpr Sight earlySights[] = {
    {memoryFault, 1, 4, 42},      {memoryFault, 2, 6, 62},   {memoryFault, 3, 8, 82},
    {memoryFault, 4, 10, 102},    {memoryFault, 5, 12, 106}, {movingInversion, 1, 4, 105},
    {movingInversion, 2, 6, 115}, {blockMove, 1, 6, 118},    {randomSequence, 1, 4, 87},
    {randomSequence, 2, 6, 120},  {moduloX, 1, 20, 26},
};

} // namespace

class CudaPrecedence : public CudaTest {
protected:
    [[nodiscard]] static simulated::CudaCardSection cardThatFlipsOn(std::uint64_t read) {
        auto card = cardWith(20);
        card.readFlips = {{somewhere, 0x100, read}};
        return card;
    }
    void stopAt(std::string_view call, unsigned nth, bool byEvent) {
        reporter = {};
        cancel = 0;
        events->flags = 0;
        at(call, nth, [this, byEvent] { byEvent ? void(events->flags = 0x02) : void(cancel = 1); });
    }
};

TEST_F(CudaPrecedence, LetsAWrongWordOutrankAStopInTheLaunchThatSeesIt) {
    for (const Sight& sight : earlySights) {
        for (const bool byEvent : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << "test " << sight.test << ", read " << sight.read << ", by event " << byEvent);
            configure(cardThatFlipsOn(sight.read));
            stopAt("cuCtxSynchronize", sight.launch, byEvent);
            EXPECT_EQ(run(sight.test), core::TestResult::Failed);
            const Events tail(reporter.events.end() - 4, reporter.events.end());
            EXPECT_EQ(tail, (Events{std::to_string(sight.progress), patternFail, "100", "100"}));
            EXPECT_EQ(reporter.messages, Events{patternFail});
            EXPECT_EQ(reporter.progress.size(), sight.launch + 2U);
            EXPECT_EQ(driver().state(0).launches, sight.launch);
            expectReleased();
        }
    }
}

TEST_F(CudaPrecedence, LetsAStopOutrankAWrongWordInTheAddressTestWhichJudgesAtItsEnd) {
    constexpr unsigned launchThatSeesIt = 4;
    for (const bool byEvent : {false, true}) {
        SCOPED_TRACE(byEvent);
        configure(cardThatFlipsOn(1));
        stopAt("cuCtxSynchronize", launchThatSeesIt, byEvent);
        EXPECT_EQ(run(address), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.messages, byEvent ? Events{aborted} : Events{});
        expectReleased();
    }
}

// An arithmetic test looks for a stop between its stages only: what the stage itself finds comes first.
TEST_F(CudaPrecedence, LetsTheOutcomeOfAStageOutrankAStopWithinIt) {
    const auto wrong = [](simulated::CudaCardSection& card) {
        card.wrongOperations = {{"cuda_kernel_standard_execute_integer", 0},
                                {"cuda_kernel_advanced_execute_integer", 0}};
    };
    const auto unreleased = [](simulated::CudaCardSection& card) { card.failingFrees.first = 1; };
    const auto expectOutcome = [&](const auto& fault, std::uint8_t result, const char* message) {
        auto card = cardWith(16);
        fault(card);
        for (const CudaTestId id : {standardMath, advancedMath}) {
            for (const char* call : {"cuMemAlloc_v2", "cuMemcpyHtoD_v2", "cuLaunchKernel", "cuCtxSynchronize",
                                     "cuMemcpyDtoH_v2", "cuMemFree_v2"}) {
                for (const bool byEvent : {false, true}) {
                    SCOPED_TRACE(testing::Message() << message << ", test " << id << " at " << call);
                    configure(card);
                    stopAt(call, 1, byEvent);
                    EXPECT_EQ(run(id), result);
                    EXPECT_EQ(reporter.events, (Events{"100", message}));
                    EXPECT_EQ(driver().state(0).launches, 1U);
                }
            }
        }
    };
    expectOutcome(wrong, core::TestResult::Failed, "MATH_OP_TEST_FAIL_MESSAGE");
    expectOutcome(unreleased, core::TestResult::CleanupFailed, "FAILED_TO_FREE_GPU_MEMORY");
}

} // namespace vexil::tests
