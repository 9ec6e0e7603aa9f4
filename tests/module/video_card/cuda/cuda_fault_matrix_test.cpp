// What each memory test makes of each fault: seen where it can be seen, and nowhere else.
#include "cuda_fixture.h"

#include <cctype>

namespace vexil::tests {

namespace {

using simulated::CudaCardSection;

constexpr std::uint64_t mebibyte = 1U << 20;
constexpr std::uint32_t testedMiB = 20;
/// In the second launch of a pass, and no first word of anything.
constexpr std::uint64_t somewhere = 17 * mebibyte + 0x1230;

constexpr const char* patternFail = "CUDA_MEMORY_TEST_PATTERN_FAIL";
constexpr const char* communication = "CUDA_MEMORY_TEST_COMMUNICATION_ERROR";
constexpr const char* allocation = "FAILED_TO_ALLOCATE_GPU_MEMORY";
constexpr const char* release = "FAILED_TO_FREE_GPU_MEMORY";

struct Outcome {
    std::uint8_t result = core::TestResult::Passed;
    const char* message = "";
    /// How many launches there were before the test gave up, where that tells in which pass the fault was
    /// seen.
    std::uint64_t launches = 0;
};

constexpr Outcome unseen{};
constexpr Outcome seen(std::uint64_t launches = 0) {
    return {core::TestResult::Failed, patternFail, launches};
}
constexpr Outcome noVerdict(const char* message) { return {core::TestResult::NotCompleted, message}; }
constexpr Outcome notReleased{core::TestResult::CleanupFailed, release};

struct Fault {
    const char* name;
    void (*put)(CudaCardSection& card);
    /// In the order of `memoryTests`: memory fault, address, moving inversion, block move, random sequence,
    /// modulo-X.
    Outcome outcomes[6];
};

// A block of 20 MiB takes two launches a pass. 0x1230 / 4 is 1164, which is 4 modulo 20: the word's turn
// comes in the fifth round of modulo-X, whose check is launch 4 * 4 + 2 + 2 = 20.
constexpr std::uint64_t moduloRound = 20;

const Fault faults[] = {
    {"nothing", [](CudaCardSection&) {}, {unseen, unseen, unseen, unseen, unseen, unseen}},

    // The bit 4 of the word's own address is 1, of 0x80808080 0, of the modulo value 1, of the pair's bit it
    // varies.
    {"a bit stuck at 0",
     [](CudaCardSection& card) {
         card.stuckBits = {{somewhere, 4, false}};
     },
     {seen(6), seen(4), seen(6), unseen, seen(), seen(moduloRound)}},
    {"a bit stuck at 1",
     [](CudaCardSection& card) {
         card.stuckBits = {{somewhere, 3, true}};
     },
     {seen(4), seen(4), seen(4), seen(6), seen(), seen(moduloRound)}},
    {"a bit stuck at what the moving pattern holds first: its complement shows it",
     [](CudaCardSection& card) {
         card.stuckBits = {{somewhere, 7, true}};
     },
     {seen(4), seen(4), seen(6), seen(6), seen(), unseen}},
    {"a bit stuck at 0 where the address has a 0: it never wants to be anything else",
     [](CudaCardSection& card) {
         card.stuckBits = {{somewhere, 0, false}};
     },
     {seen(6), unseen, seen(6), unseen, seen(), unseen}},
    {"all bits stuck at the modulo value: the complement around it is never read back",
     [](CudaCardSection& card) {
         for (unsigned bit = 0; bit < 32; ++bit) {
             card.stuckBits.push_back({somewhere, bit, (0x33B37096U >> bit & 1U) != 0});
         }
     },
     {seen(4), seen(4), seen(4), seen(6), seen(), unseen}},
    {"the same bit stuck in both words of a pair, which stay equal",
     [](CudaCardSection& card) {
         card.stuckBits = {{somewhere, 3, true}, {somewhere + 4, 3, true}};
     },
     {seen(4), seen(4), seen(4), unseen, seen(), seen(moduloRound)}},
    {"a stuck bit in the reference of the random sequence, which all chunks are compared with as it reads",
     [](CudaCardSection& card) {
         card.stuckBits = {{0x1230, 3, true}, {0x1230, 4, false}};
     },
     {seen(3), seen(4), seen(3), seen(5), unseen, seen()}},

    // The write pass reads nothing, so the first read of a word is its first check.
    {"a word that flips on its first read",
     [](CudaCardSection& card) {
         card.readFlips = {{somewhere, 0x100, 1}};
     },
     {seen(4), seen(4), seen(4), seen(6), seen(4), seen(moduloRound)}},
    {"a word that flips on its second read: the address test reads each word once",
     [](CudaCardSection& card) {
         card.readFlips = {{somewhere, 0x100, 2}};
     },
     {seen(6), unseen, seen(6), seen(6), seen(6), unseen}},
    {"a word that flips on its sixth read: after the last look of all",
     [](CudaCardSection& card) {
         card.readFlips = {{somewhere, 0x100, 6}};
     },
     {unseen, unseen, unseen, unseen, unseen, unseen}},

    // The word behind is written later in the same walk, the one before has been.
    {"a write that lands in the word behind: the next step of the memory-fault walk reads it",
     [](CudaCardSection& card) {
         card.shortedWords = {{somewhere, somewhere + 4}};
     },
     {seen(4), seen(4), seen(4), seen(6), seen(4), seen(moduloRound)}},
    {"a write that lands in the word before",
     [](CudaCardSection& card) {
         card.shortedWords = {{somewhere + 4, somewhere}};
     },
     {seen(6), seen(4), seen(4), seen(6), seen(4), seen(moduloRound)}},
    {"a write that lands in another chunk",
     [](CudaCardSection& card) {
         card.shortedWords = {{somewhere, 3 * mebibyte}};
     },
     {seen(), seen(), seen(4), seen(), seen(), seen()}},

    {"no launch works: the flag stays as it was",
     [](CudaCardSection& card) { card.failingLaunches.first = 1; },
     {unseen, unseen, unseen, unseen, unseen, unseen}},
    {"the first launch fails, which writes zeros where the memory has them anyway",
     [](CudaCardSection& card) {
         card.failingLaunches = {1, 1};
     },
     {unseen, seen(4), seen(3), unseen, seen(3), seen(3)}},
    {"the sixth launch fails: in a check nobody misses it, in a write the next check does",
     [](CudaCardSection& card) {
         card.failingLaunches = {6, 1};
     },
     {seen(8), unseen, unseen, unseen, unseen, seen(8)}},

    {"no allocation works",
     [](CudaCardSection& card) { card.failingAllocations.first = 1; },
     {noVerdict(allocation), noVerdict(allocation), noVerdict(allocation), noVerdict(allocation),
      noVerdict(allocation), noVerdict(allocation)}},
    {"nothing above 1 MiB can be had",
     [](CudaCardSection& card) {
         card.memoryBytes = (32 + 32) * mebibyte;
         card.largestAllocation = mebibyte;
     },
     {noVerdict(allocation), noVerdict(allocation), noVerdict(allocation), noVerdict(allocation),
      noVerdict(allocation), noVerdict(allocation)}},
    {"the first try for the block fails",
     [](CudaCardSection& card) {
         card.memoryBytes += 16 * mebibyte;
         card.failingAllocations = {2, 1};
     },
     {unseen, unseen, unseen, unseen, unseen, unseen}},
    {"nothing can be freed",
     [](CudaCardSection& card) { card.failingFrees.first = 1; },
     {notReleased, notReleased, notReleased, notReleased, notReleased, notReleased}},
    {"nothing can be copied to the card",
     [](CudaCardSection& card) { card.failingCopiesToCard.first = 1; },
     {noVerdict(allocation), noVerdict(allocation), noVerdict(allocation), noVerdict(allocation),
      noVerdict(allocation), noVerdict(allocation)}},
    {"the second copy to the card fails",
     [](CudaCardSection& card) { card.failingCopiesToCard.first = 2; },
     {unseen, unseen, unseen, unseen, noVerdict(communication), unseen}},
    {"nothing can be copied from the card",
     [](CudaCardSection& card) { card.failingCopiesFromCard.first = 1; },
     {noVerdict(communication), noVerdict(communication), noVerdict(communication), noVerdict(communication),
      noVerdict(communication), noVerdict(communication)}},
};

void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.name; }

std::string nameOfCase(const testing::TestParamInfo<Fault>& fault) {
    std::string name;
    for (const char* c = fault.param.name; *c != '\0'; ++c) {
        name += std::isalnum(static_cast<unsigned char>(*c)) != 0 ? *c : '_';
    }
    return name;
}

} // namespace

class CudaFaultMatrix : public CudaTest, public testing::WithParamInterface<Fault> {};

TEST_P(CudaFaultMatrix, EndsAsTheFaultDemands) {
    const Fault& fault = GetParam();
    for (std::size_t place = 0; place < std::size(memoryTests); ++place) {
        SCOPED_TRACE(testing::Message() << fault.name << ", test " << memoryTests[place]);
        auto card = cardWith(testedMiB);
        fault.put(card);
        configure(card);
        reporter = {};
        const Outcome& expected = fault.outcomes[place];
        EXPECT_EQ(run(memoryTests[place]), expected.result);
        if (*expected.message == '\0') {
            EXPECT_TRUE(reporter.messages.empty());
        } else {
            EXPECT_EQ(reporter.messages, std::vector<std::string>{expected.message});
        }
        if (expected.launches != 0) {
            EXPECT_EQ(driver().state(0).launches, expected.launches);
        }
        if (expected.result == core::TestResult::Failed) {
            EXPECT_EQ(reporter.progress.size(), driver().state(0).launches + 2)
                << "after each launch, in the tail, and at the end of the run";
        }
        EXPECT_EQ(reporter.progress.back(), 100U);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryFault, CudaFaultMatrix, testing::ValuesIn(faults), nameOfCase);

class CudaFaultProgress : public CudaTest {};

TEST_F(CudaFaultProgress, StandsBetween30And50WhenTheThirdMemoryFaultPassSeesABitStuckAt0) {
    auto card = cardWith(200);
    card.stuckBits = {{100 * mebibyte, 9, false}};
    configure(card);
    EXPECT_EQ(run(memoryFault), core::TestResult::Failed);
    // Two whole passes of 13 launches, then the one that reaches the 100th MiB is the seventh.
    constexpr std::size_t launches = 13 + 13 + 7;
    EXPECT_EQ(driver().state(0).launches, launches);
    ASSERT_EQ(reporter.progress.size(), launches + 2);
    EXPECT_EQ(reporter.progress[launches - 1], 41U) << "30 + 7 * 320 / 200";
    EXPECT_EQ(reporter.progress[launches], 100U) << "the tail sets it";
}

TEST_F(CudaFaultProgress, RunsToTheEndOfTheAddressTestAfterAnEarlyMismatch) {
    auto card = cardWith(64);
    card.stuckBits = {{0x10, 4, false}};
    configure(card);
    EXPECT_EQ(run(address), core::TestResult::Failed);
    EXPECT_EQ(driver().state(0).launches, 8U) << "all four launches of both passes";
    EXPECT_EQ(reporter.messages, std::vector<std::string>{patternFail}) << "once";
}

TEST_F(CudaFaultProgress, AddsTheMessageBeforeTheProgressWhenAWrongWordWasSeen) {
    auto card = cardWith(16);
    card.stuckBits = {{0x10, 4, false}};
    configure(card);
    run(memoryFault);
    const std::vector<std::string> tail(reporter.events.end() - 3, reporter.events.end());
    EXPECT_EQ(tail, (std::vector<std::string>{patternFail, "100", "100"}));
}

TEST_F(CudaFaultProgress, PassesABlockMoveWhosePairsAreEqualWhateverTheyHold) {
    auto card = cardWith(16);
    // Whole groups of pairs read as if they had never been written.
    for (std::uint64_t word = 0; word < 64; ++word) {
        for (unsigned bit = 0; bit < 32; ++bit) {
            card.stuckBits.push_back({5 * mebibyte + word * 4, bit, false});
        }
    }
    configure(card);
    EXPECT_EQ(run(blockMove), core::TestResult::Passed);
    EXPECT_EQ(run(movingInversion), core::TestResult::Failed);
}

TEST_F(CudaFaultProgress, HidesAnErrorOfTheRandomReferenceThatHappenedBeforeTheWritePass) {
    auto card = cardWith(20);
    card.readFlips = {{0x40, 1, 1}};
    configure(card);
    EXPECT_EQ(run(randomSequence), core::TestResult::Passed)
        << "the first to read it are the kernels that copy it";
    // Later it is a mismatch against all other chunks.
    card.readFlips = {{0x40, 1, 25}};
    configure(card);
    EXPECT_EQ(run(randomSequence), core::TestResult::Failed);
}

} // namespace vexil::tests
