#include "cuda_fixture.h"

namespace vexil::tests {

namespace {

/// A pass as it shows: the accumulator grows by `step` a launch, and the quotient by the size of the block is
/// shown.
struct ShownPass {
    std::uint32_t base, step, firstMiB = 0, start = 0, addend = 0, divisor = 1;
};

std::vector<ShownPass> passesOf(CudaTestId id) {
    switch (id) {
    case memoryFault:
        return {{0, 160}, {10, 320}, {30, 320}, {50, 320}, {70, 320}, {90, 160}};
    case address:
        return {{0, 800}, {50, 800}};
    case movingInversion:
        return {{0, 400}, {25, 800}, {75, 400}};
    case blockMove:
        return {{0, 528}, {33, 528}, {66, 528}};
    case randomSequence:
        return {{0, 528, 1, 33}, {33, 528, 1, 33}, {66, 528, 1, 33}};
    default:
        break;
    }
    std::vector<ShownPass> passes;
    for (std::uint32_t offset = 0; offset < 20; ++offset) {
        passes.push_back({5 * offset, 800, 0, 0, 0, 20});
        passes.push_back({5 * offset, 800, 0, 0, 50, 20});
    }
    return passes;
}

std::vector<unsigned> progressOf(CudaTestId id, std::uint32_t testedMiB) {
    std::vector<unsigned> shown;
    for (const ShownPass& pass : passesOf(id)) {
        std::uint32_t accumulator = pass.start;
        for (std::uint32_t at = pass.firstMiB; at < testedMiB; at += 16) {
            accumulator += pass.step;
            shown.push_back((accumulator / testedMiB + pass.addend) / pass.divisor + pass.base);
        }
    }
    shown.push_back(100);
    return shown;
}

using Progress = std::vector<unsigned>;

} // namespace

class CudaMemoryProgress : public CudaTest {};

TEST_F(CudaMemoryProgress, GoesAsEachPassComputesItForBlocksOfAllShapes) {
    for (const CudaTestId id : memoryTests) {
        for (const std::uint32_t testedMiB : {20U, 17U, 16U}) {
            SCOPED_TRACE(testing::Message() << "test " << id << ", " << testedMiB << " MiB");
            configure(cardWith(testedMiB));
            reporter = {};
            EXPECT_EQ(run(id), core::TestResult::Passed);
            EXPECT_EQ(reporter.progress, progressOf(id, testedMiB));
            EXPECT_TRUE(reporter.messages.empty());
        }
    }
}

TEST_F(CudaMemoryProgress, GoesTheSameWayThroughABlockOfAThousandMebibytes) {
    for (const CudaTestId id : memoryTests) {
        SCOPED_TRACE(testing::Message() << "test " << id);
        auto card = cardWith(1000);
        // The launches are counted, not done: a failed launch changes neither the flag nor the progress.
        card.failingLaunches.first = 1;
        configure(card);
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::Passed);
        EXPECT_EQ(reporter.progress, progressOf(id, 1000));
    }
}

// The same in numbers that no program has computed.
TEST_F(CudaMemoryProgress, ShowsTheseNumbersForABlockOf20Mebibytes) {
    configure(cardWith(20));
    run(address);
    EXPECT_EQ(reporter.progress, (Progress{40, 80, 90, 130, 100}));
    reporter = {};
    run(memoryFault);
    EXPECT_EQ(reporter.progress, (Progress{8, 16, 26, 42, 46, 62, 66, 82, 86, 102, 98, 106, 100}));
    reporter = {};
    run(movingInversion);
    EXPECT_EQ(reporter.progress, (Progress{20, 40, 65, 105, 95, 115, 100}));
    reporter = {};
    run(blockMove);
    EXPECT_EQ(reporter.progress, (Progress{26, 52, 59, 85, 92, 118, 100}));
    reporter = {};
    run(randomSequence);
    EXPECT_EQ(reporter.progress, (Progress{28, 54, 61, 87, 94, 120, 100}));
}

TEST_F(CudaMemoryProgress, ShowsTheseNumbersForABlockOf16Mebibytes) {
    configure(cardWith(16));
    run(address);
    EXPECT_EQ(reporter.progress, (Progress{50, 100, 100}));
    reporter = {};
    run(moduloX);
    EXPECT_EQ(Progress(reporter.progress.begin(), reporter.progress.begin() + 4), (Progress{2, 5, 7, 10}));
    EXPECT_EQ(reporter.progress.size(), 41U);
    reporter = {};
    run(randomSequence);
    EXPECT_EQ(reporter.progress, (Progress{35, 68, 101, 100}));
}

TEST_F(CudaMemoryProgress, NeedsOneLaunchAPassForARandomSequenceInABlockOf17Mebibytes) {
    configure(cardWith(17));
    run(randomSequence);
    EXPECT_EQ(reporter.progress, (Progress{33, 66, 99, 100}));
    EXPECT_EQ(driver().state(0).launches, 3U);
}

TEST_F(CudaMemoryProgress, PassesARandomSequenceAtOnceInABlockThatHoldsTheReferenceAlone) {
    configure(cardWith(1));
    EXPECT_EQ(run(randomSequence), core::TestResult::Passed);
    EXPECT_EQ(reporter.progress, Progress{100});
    EXPECT_EQ(driver().state(0).launches, 0U);
}

TEST_F(CudaMemoryProgress, TakesFortySweepsForModuloX) {
    configure(cardWith(16));
    EXPECT_EQ(run(moduloX), core::TestResult::Passed);
    EXPECT_EQ(driver().state(0).launches, 40U);
}

} // namespace vexil::tests
