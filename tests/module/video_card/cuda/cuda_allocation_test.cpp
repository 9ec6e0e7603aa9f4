// How large a block a memory test takes. The arithmetic is 32 bits wide and wraps, which is settled
// behaviour.
#include "cuda_fixture.h"
#include "probed_test.h"

namespace vexil::tests {

namespace {

constexpr std::uint64_t mebibyte = 1U << 20;
constexpr std::uint64_t gibibyte = 1024 * mebibyte;

using Sizes = std::vector<std::uint64_t>;
using Events = std::vector<std::string>;

} // namespace

class CudaAllocation : public CudaTest {
protected:
    /// Runs a test that is stopped as soon as the block is there. Returns the sizes asked for in MiB, without
    /// the flag.
    Sizes requestsFor(simulated::CudaCardSection card) {
        card.failingLaunches.first = 1;
        configure(card);
        reporter = {};
        cancel = 0;
        at("cuLaunchKernel", 1, [&] { cancel = 1; });
        result = run(address);
        Sizes requests = driver().state(0).requests;
        EXPECT_EQ(requests.at(0), 1U) << "the flag";
        requests.erase(requests.begin());
        for (auto& size : requests) {
            EXPECT_EQ(size % mebibyte, 0U);
            size /= mebibyte;
        }
        return requests;
    }
    static simulated::CudaCardSection reporting(std::uint64_t total, std::uint64_t free,
                                                std::uint64_t capacity) {
        simulated::CudaCardSection card;
        card.pciBusId = "0000:01:00.0";
        card.memoryBytes = capacity;
        card.reportedTotalBytes = total;
        card.reportedFreeBytes = free;
        return card;
    }

    std::uint8_t result = 0;
};

TEST_F(CudaAllocation, LeavesAMarginAndOneStepBelowTheSmallerOfBothAmounts) {
    EXPECT_EQ(requestsFor(reporting(500 * mebibyte, 300 * mebibyte, gibibyte)), Sizes{300 - 32});
    EXPECT_EQ(requestsFor(reporting(200 * mebibyte, 300 * mebibyte, gibibyte)), Sizes{200 - 32});
    EXPECT_EQ(requestsFor(reporting(200 * mebibyte + 5, 200 * mebibyte + mebibyte - 1, gibibyte)),
              Sizes{200 - 32});
}

TEST_F(CudaAllocation, TakesBothAmountsFromTheCardThatTheRecordNames) {
    device->setCuda({"01:00.0", 1});
    for (const std::uint64_t total : {100U, 300U}) {
        const auto other = reporting(500 * mebibyte, 500 * mebibyte, gibibyte);
        auto card = reporting(total * mebibyte, (400 - total) * mebibyte, gibibyte);
        card.failingLaunches.first = 1;
        configure(other); // and nothing is left of the round before
        driver().configure({12040, {other, card}});
        EXPECT_EQ(run(address), core::TestResult::Passed);
        EXPECT_EQ(driver().state(0).requests, Sizes{});
        EXPECT_EQ(driver().state(1).requests, (Sizes{1, 68 * mebibyte}));
    }
}

TEST_F(CudaAllocation, CutsByteCountsToTheirLow32Bits) {
    EXPECT_EQ(requestsFor(reporting(6 * gibibyte, 6 * gibibyte, 8 * gibibyte)), Sizes{2048 - 32});
    EXPECT_EQ(requestsFor(reporting(8 * gibibyte - mebibyte, 8 * gibibyte - mebibyte, 8 * gibibyte)),
              Sizes{4095 - 32});
    EXPECT_EQ(requestsFor(
                  reporting(139 * gibibyte + 700 * mebibyte, 139 * gibibyte + 600 * mebibyte, 8 * gibibyte)),
              Sizes{3 * 1024 + 600 - 32});
}

TEST_F(CudaAllocation, SweepsWhatTheLow32BitsSayAndNoMore) {
    // Larger counts would ask for the same block, since the sizes are cut as well, and sweep it more than
    // once.
    auto card = reporting(6 * gibibyte, 6 * gibibyte, 8 * gibibyte);
    card.failingLaunches.first = 1;
    configure(card);
    ProbedTest test;
    EXPECT_EQ(test.execute(arguments()), core::TestResult::Passed);
    EXPECT_EQ(test.testedMiB_, 2016U);
    EXPECT_EQ(test.memoryEnd_, test.begin + 2016 * mebibyte);
    EXPECT_EQ(driver().state(0).launches, 2U * 2016 / 16);
}

TEST_F(CudaAllocation, LetsTheFreeAmountDecideWhenTheTotalWraps) {
    EXPECT_EQ(requestsFor(reporting(4 * gibibyte, 100 * mebibyte, gibibyte)), Sizes{100 - 32});
    EXPECT_EQ(requestsFor(reporting(4 * gibibyte + 15 * mebibyte, 100 * mebibyte, gibibyte)),
              Sizes{100 - 32});
}

TEST_F(CudaAllocation, LetsTheTotalDecideWhenTheFreeAmountWraps) {
    EXPECT_EQ(requestsFor(reporting(100 * mebibyte, 10 * mebibyte, gibibyte)), Sizes{100 - 32});
    // The retries find what fits.
    EXPECT_EQ(requestsFor(reporting(100 * mebibyte, 4 * gibibyte, 40 * mebibyte)), (Sizes{68, 52, 36}));
    EXPECT_EQ(result, core::TestResult::NotCompleted);
    EXPECT_TRUE(reporter.messages.empty()) << "stopped by the user";
}

TEST_F(CudaAllocation, AsksForAlmost4GibibytesWhenBothAmountsWrap) {
    // 0xFFFFFFF0 - 16 MiB, shifted to bytes in 32 bits.
    EXPECT_EQ(requestsFor(reporting(4 * gibibyte, 8 * gibibyte, 8 * gibibyte)), Sizes{4064});
}

TEST_F(CudaAllocation, GivesUp16MebibytesForEachFailedAllocation) {
    auto card = reporting(100 * mebibyte, 100 * mebibyte, gibibyte);
    card.failingAllocations = {2, 3};
    EXPECT_EQ(requestsFor(card), (Sizes{68, 52, 36, 20}));
    card.failingAllocations = {};
    card.largestAllocation = 40 * mebibyte;
    EXPECT_EQ(requestsFor(card), (Sizes{68, 52, 36}));
}

TEST_F(CudaAllocation, FailsWhenTheCountReachesZeroExactly) {
    auto card = reporting(80 * mebibyte, 80 * mebibyte, gibibyte);
    card.failingAllocations.first = 2;
    EXPECT_EQ(requestsFor(card), (Sizes{48, 32, 16}));
    EXPECT_EQ(result, core::TestResult::NotCompleted);
    EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_ALLOCATE_GPU_MEMORY"}));
    EXPECT_EQ(driver().state(0).allocations, Sizes{});
    EXPECT_EQ(requestsFor(reporting(32 * mebibyte, 32 * mebibyte, gibibyte)), Sizes{});
    EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_ALLOCATE_GPU_MEMORY"}));
}

TEST_F(CudaAllocation, WrapsAroundAndGoesOnWhenTheCountIsNoMultipleOf16) {
    auto card = reporting(68 * mebibyte, 68 * mebibyte, 8 * gibibyte);
    card.failingAllocations = {2, 4};
    // 36, 20, 4, then 4 - 16 in 32 bits, of which the shift keeps 4084.
    EXPECT_EQ(requestsFor(card), (Sizes{36, 20, 4, 4084, 4068}));
    EXPECT_EQ(result, core::TestResult::NotCompleted);
}

TEST_F(CudaAllocation, FailsWhenTheFlagCannotBeHad) {
    for (const CudaTestId id : memoryTests) {
        auto card = cardWith(16);
        card.failingAllocations.first = 1;
        configure(card);
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_ALLOCATE_GPU_MEMORY"}));
        EXPECT_EQ(driver().state(0).requests.size(), 1U);
        // Until it is allocated the flag is the host's own byte, which no driver frees: the release ends
        // there.
        EXPECT_EQ(driver().state(0).retained, 1);

        card = cardWith(16);
        card.failingCopiesToCard.first = 1;
        configure(card);
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_ALLOCATE_GPU_MEMORY"}));
        EXPECT_EQ(driver().state(0).allocations, Sizes{});
    }
}

TEST_F(CudaAllocation, FailsWhenTheFreeMemoryIsNotTold) {
    for (const CudaTestId id : memoryTests) {
        configure(cardWith(16));
        reporter = {};
        // From this call on the machine has no card, and none of its calls works any more.
        Events callsAfter;
        bool asked = false;
        driver().observe([&](const char* call) {
            if (asked) {
                callsAfter.emplace_back(call);
            } else if (std::string_view(call) == "cuMemGetInfo_v2") {
                asked = true;
                driver().configure({12040, {}});
            }
        });
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_ALLOCATE_GPU_MEMORY"}));
        EXPECT_EQ(callsAfter, Events{"cuCtxSetCurrent"}) << "for the release; no block is asked for";
    }
}

TEST_F(CudaAllocation, IgnoresThatReleasingFailsAfterAFailedAllocation) {
    auto card = cardWith(16);
    card.failingAllocations.first = 2;
    card.failingFrees.first = 1;
    configure(card);
    EXPECT_EQ(run(address), core::TestResult::NotCompleted);
    EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_ALLOCATE_GPU_MEMORY"}));
    EXPECT_EQ(driver().state(0).allocations, Sizes{1}) << "the flag stays";
}

TEST_F(CudaAllocation, PaysForAnOlderErrorOfTheThreadWithOneMoreRound) {
    device->setCuda({"01:00.0", 5});
    auto card = reporting(100 * mebibyte, 100 * mebibyte, gibibyte);
    card.failingLaunches.first = 1;
    configure(card);
    at("cuLaunchKernel", 1, [&] { cancel = 1; });
    // A number that no card has: the error is not looked at, device 0 is used, and no total is known, which
    // wraps.
    run(address);
    EXPECT_EQ(driver().state(0).requests, (Sizes{1, 68 * mebibyte, 52 * mebibyte}));
}

} // namespace vexil::tests
