#include "cuda_fixture.h"

#include "module/video_card/cuda/cuda_math_operations.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "module/video_card/cuda/math_tables.h"
#include "module/video_card/cuda/random_words.h"
#include "support/table_mark.h"

#include <bit>
#include <cmath>
#include <limits>

namespace vexil::tests {

using namespace module::video_card;
using simulated::CudaWrongValue;

namespace {

constexpr const char* aborted =
    "TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";
constexpr const char* failed = "MATH_OP_TEST_FAIL_MESSAGE";

using Events = std::vector<std::string>;
using Sizes = std::vector<std::uint64_t>;

struct Stage {
    CudaTestId test;
    const char* kernel;
    std::uint32_t rows;
    bool isFloat;
};

constexpr Stage stages[] = {
    {standardMath, "cuda_kernel_standard_execute_integer", 4, false},
    {standardMath, "cuda_kernel_standard_execute_float", 4, true},
    {advancedMath, "cuda_kernel_advanced_execute_integer", 9, false},
    {advancedMath, "cuda_kernel_advanced_execute_float", 13, true},
};

} // namespace

class CudaMath : public CudaTest {
protected:
    std::uint8_t runWith(CudaTestId id, const simulated::CudaWrongOperation& wrong) {
        auto card = cardWith(16);
        card.wrongOperations = {wrong};
        configure(card);
        reporter = {};
        return run(id);
    }
};

TEST_F(CudaMath, SeesOneWrongRowOfEachKernel) {
    for (const Stage& stage : stages) {
        for (std::uint32_t row = 0; row < stage.rows; ++row) {
            SCOPED_TRACE(testing::Message() << stage.kernel << " row " << row);
            EXPECT_EQ(runWith(stage.test, {stage.kernel, row, CudaWrongValue::OneMore}),
                      core::TestResult::Failed);
            EXPECT_EQ(reporter.events, (Events{"100", failed}));
            EXPECT_EQ(driver().state(0).allocations, Sizes{});
        }
        EXPECT_EQ(runWith(stage.test, {stage.kernel, stage.rows, CudaWrongValue::OneMore}),
                  core::TestResult::Passed)
            << "a row behind the table";
    }
}

TEST_F(CudaMath, SeesAKernelThatWritesZeroEverywhere) {
    for (const Stage& stage : stages) {
        EXPECT_EQ(runWith(stage.test, {stage.kernel, std::nullopt, CudaWrongValue::Zero}),
                  core::TestResult::Failed);
    }
}

TEST_F(CudaMath, PassesFloatsThatAreNoNumbersOrInfinite) {
    for (const Stage& stage : stages) {
        for (const auto value : {CudaWrongValue::NaN, CudaWrongValue::Infinity}) {
            EXPECT_EQ(runWith(stage.test, {stage.kernel, std::nullopt, value}),
                      stage.isFloat ? core::TestResult::Passed : core::TestResult::Failed)
                << stage.kernel;
        }
    }
}

TEST_F(CudaMath, PassesFloatsOfTheWrongSignBeyondTheTolerance) {
    for (const Stage& stage : stages) {
        EXPECT_EQ(runWith(stage.test, {stage.kernel, std::nullopt, CudaWrongValue::Negated}),
                  stage.isFloat ? core::TestResult::Passed : core::TestResult::Failed)
            << stage.kernel;
    }
}

TEST_F(CudaMath, DoesNotRunTheFloatStageAfterAFailedIntegerStage) {
    EXPECT_EQ(runWith(standardMath, {stages[0].kernel, 0, CudaWrongValue::OneMore}),
              core::TestResult::Failed);
    EXPECT_EQ(driver().state(0).launches, 1U);
    EXPECT_EQ(runWith(standardMath, {stages[1].kernel, 0, CudaWrongValue::OneMore}),
              core::TestResult::Failed);
    EXPECT_EQ(driver().state(0).launches, 2U);
}

TEST_F(CudaMath, AllocatesFourBuffersOfTheTableEachStage) {
    configure(cardWith(16));
    EXPECT_EQ(run(standardMath), core::TestResult::Passed);
    EXPECT_EQ(driver().state(0).requests, Sizes(8, 4 * 5 * 4));
    configure(cardWith(16));
    EXPECT_EQ(run(advancedMath), core::TestResult::Passed);
    Sizes sizes(4, 9 * 5 * 4);
    sizes.insert(sizes.end(), 4, 13 * 5 * 4);
    EXPECT_EQ(driver().state(0).requests, sizes);
    EXPECT_TRUE(reporter.progress.empty()) << "a test that passes shows no progress";
}

TEST_F(CudaMath, FailsAtTheFirstAllocationThatCannotBeHad) {
    for (std::uint64_t nth = 1; nth <= 8; ++nth) {
        auto card = cardWith(16);
        card.failingAllocations = {nth, 1};
        configure(card);
        reporter = {};
        EXPECT_EQ(run(standardMath), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_ALLOCATE_GPU_MEMORY"}));
        EXPECT_EQ(driver().state(0).requests.size(), nth);
        EXPECT_EQ(driver().state(0).allocations, Sizes{});
    }
}

TEST_F(CudaMath, EndsWithoutVerdictWhenACopyFails) {
    for (std::uint64_t nth = 1; nth <= 8; ++nth) {
        SCOPED_TRACE(nth);
        auto card = cardWith(16);
        // Three copies to the card and one back, in each stage.
        const std::uint64_t stage = (nth - 1) / 4, copy = (nth - 1) % 4;
        if (copy < 3) {
            card.failingCopiesToCard = {stage * 3 + copy + 1, 1};
        } else {
            card.failingCopiesFromCard = {stage + 1, 1};
        }
        configure(card);
        reporter = {};
        EXPECT_EQ(run(advancedMath), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.events, (Events{"100", "CUDA_MEMORY_TEST_COMMUNICATION_ERROR"}));
        EXPECT_EQ(driver().state(0).allocations, Sizes{});

        card.failingFrees.first = stage * 4 + 1;
        configure(card);
        reporter = {};
        EXPECT_EQ(run(advancedMath), core::TestResult::CleanupFailed);
        EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_FREE_GPU_MEMORY"}));
    }
}

TEST_F(CudaMath, ReportsBuffersThatCannotBeFreedAndResetsTheDeviceAllTheSame) {
    for (std::uint64_t nth = 1; nth <= 8; ++nth) {
        auto card = cardWith(16);
        card.failingFrees = {nth, 1};
        configure(card);
        reporter = {};
        EXPECT_EQ(run(standardMath), core::TestResult::CleanupFailed);
        EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_FREE_GPU_MEMORY"}));
        EXPECT_EQ(driver().state(0).allocations, Sizes{}) << "the reset takes what the failed free left";
        EXPECT_EQ(driver().state(0).retained, 0);
        EXPECT_EQ(driver().state(0).launches, nth <= 4 ? 1U : 2U);
    }
}

TEST_F(CudaMath, LetsAWrongResultOutrankBuffersThatCannotBeFreed) {
    auto card = cardWith(16);
    card.wrongOperations = {{stages[0].kernel, 0, CudaWrongValue::OneMore}};
    card.failingFrees.first = 1;
    configure(card);
    EXPECT_EQ(run(standardMath), core::TestResult::Failed);
    EXPECT_EQ(reporter.events, (Events{"100", "FAILED_TO_FREE_GPU_MEMORY", "100", failed}));
}

TEST_F(CudaMath, SeesALaunchThatFailedInTheResultsThatAreNotThere) {
    auto card = cardWith(16);
    card.failingLaunches.first = 1;
    configure(card);
    EXPECT_EQ(run(standardMath), core::TestResult::Failed);
}

TEST_F(CudaMath, LooksForAStopBeforeTheTestAndAfterEachStageOnly) {
    struct Point {
        const char* call;
        unsigned nth;
        std::uint64_t launches;
    };
    const Point points[] = {{"", 0, 0}, {"cuLaunchKernel", 1, 1}, {"cuLaunchKernel", 2, 2}};
    for (const CudaTestId id : {standardMath, advancedMath}) {
        for (const Point& point : points) {
            for (const bool byEvent : {false, true}) {
                configure(cardWith(16));
                reporter = {};
                cancel = 0;
                events->flags = 0;
                const auto stop = [&] { byEvent ? void(events->flags = 0x40) : void(cancel = 1); };
                point.nth == 0 ? stop() : at(point.call, point.nth, stop);
                EXPECT_EQ(run(id), core::TestResult::NotCompleted);
                EXPECT_EQ(reporter.events, byEvent ? (Events{"100", aborted}) : Events{});
                EXPECT_EQ(driver().state(0).launches, point.launches);
                EXPECT_EQ(driver().state(0).allocations, Sizes{});
            }
        }
    }
}

TEST_F(CudaMath, ExplainsAStopThatHasBothCauses) {
    cancel = 1;
    events->flags = 0x08;
    for (const CudaTestId id : {standardMath, advancedMath}) {
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::NotCompleted);
        EXPECT_EQ(reporter.events, (Events{"100", aborted}));
    }
}

TEST_F(CudaMath, SetsTheDeviceOfTheRecordBeforeEachStage) {
    driver().configure({12040, {cardWith(16), cardWith(16)}});
    device->setCuda({"01:00.0", 1});
    // The last free of the first stage leaves the thread with another card.
    at("cuMemFree_v2", 4, [] { CudaRuntime::instance().cudaSetDevice(0); });
    EXPECT_EQ(run(advancedMath), core::TestResult::Passed);
    EXPECT_EQ(driver().state(0).launches, 0U);
    EXPECT_EQ(driver().state(1).launches, 2U);
}

TEST_F(CudaMath, GoesOnWithTheCardThatTheHostGivesUpDuringTheFirstStage) {
    for (const CudaTestId id : {standardMath, advancedMath}) {
        configure(cardWith(16));
        const std::weak_ptr<Device> card = device;
        at("cuLaunchKernel", 1, [&] { device.reset(); });
        EXPECT_EQ(run(id), core::TestResult::Passed);
        EXPECT_EQ(driver().state(0).launches, 2U);
        EXPECT_TRUE(card.expired());
        device = makeDevice();
    }
}

TEST_F(CudaMath, SaysNothingAboutACardThatTheHostGivesUpAtTheDriverGate) {
    for (const CudaTestId id : {standardMath, advancedMath}) {
        configure(cardWith(16));
        reporter = {};
        at("cuDriverGetVersion", 1, [&] { device.reset(); });
        EXPECT_EQ(run(id), core::TestResult::DeviceUnavailable);
        EXPECT_EQ(reporter.events, Events{});
        EXPECT_EQ(driver().state(0).launches, 0U);
        device = makeDevice();
    }
}

TEST_F(CudaMath, FreesUpToTheFirstBufferThatCannotBeFreed) {
    for (std::uint64_t nth = 1; nth <= 4; ++nth) {
        auto card = cardWith(16);
        card.failingFrees = {nth, 1};
        configure(card);
        unsigned frees = 0;
        driver().observe(
            [&](const char* call) { frees += std::string_view(call) == "cuMemFree_v2" ? 1 : 0; });
        EXPECT_EQ(run(standardMath), core::TestResult::CleanupFailed);
        EXPECT_EQ(frees, nth);
    }
}

TEST_F(CudaMath, IsStoppedBeforeItLooksForTheDevice) {
    cancel = 1;
    auto gone = arguments();
    gone.device.reset();
    EXPECT_EQ(makeCudaTest(standardMath)->execute(gone), core::TestResult::NotCompleted);
}

TEST_F(CudaMath, LeavesTheTablesEmptyForAModeThatDoesNotExist) {
    const auto run = arguments();
    configure(cardWith(16));
    for (const std::int32_t mode : {-1, 2}) {
        // Buffers of no bytes, nothing launched with success, nothing to compare.
        EXPECT_EQ(CudaMathOperationsInt(mode, run).run(0), core::TestResult::Passed);
        EXPECT_EQ(CudaMathOperationsFloat(mode, run).run(1), core::TestResult::Passed);
    }
    EXPECT_EQ(driver().state(0).requests, Sizes{});
}

TEST_F(CudaMath, PicksTheKernelByTheArgumentOfTheRunAndTheTableByTheMode) {
    const auto run = arguments();
    configure(cardWith(16));
    // The first four rows of the advanced kernel are no sums, differences, products and quotients.
    EXPECT_EQ(CudaMathOperationsInt(0, run).run(1), core::TestResult::Failed);
    EXPECT_EQ(CudaMathOperationsFloat(1, run).run(0), core::TestResult::Failed);
    EXPECT_EQ(CudaMathOperationsInt(1, run).run(7), core::TestResult::Passed) << "any number but 0";
}

TEST(CudaMathComparison, TakesWhatLiesWithinTheTolerance) {
    EXPECT_TRUE(isFloatRight(0.0F, -0.0F, 0, 0));
    EXPECT_TRUE(isFloatRight(1.0F, 1.0F, 0, 0));
    EXPECT_FALSE(isFloatRight(std::nextafter(1.0F, 2.0F), 1.0F, 0, 0));
    EXPECT_TRUE(isFloatRight(1.5F, 1.0F, 0, 0.5F)) << "the tolerance itself is within";
    EXPECT_FALSE(isFloatRight(1.5F, 1.0F, 0, 0.49F));
    EXPECT_TRUE(isFloatRight(-4.37113883e-08F, 4.37113883e-08F, 0, 5.11061387e-07F));
    EXPECT_FALSE(isFloatRight(9.0909091e+19F + 1e13F, 9.09090903e+19F, 0, 1.1920929e-07F));
}

TEST(CudaMathComparison, CountsStepsOfTheBitPatternBeyondTheTolerance) {
    const float two = std::nextafter(std::nextafter(1000.0F, 2000.0F), 2000.0F);
    EXPECT_TRUE(isFloatRight(two, 1000.0F, 2, 1e-7F));
    EXPECT_TRUE(isFloatRight(1000.0F, two, 2, 1e-7F));
    EXPECT_FALSE(isFloatRight(two, 1000.0F, 1, 1e-7F));
    EXPECT_FALSE(isFloatRight(-two, -1000.0F, 1, 1e-7F));
}

TEST(CudaMathComparison, TakesAWrongSignBeyondTheTolerance) { EXPECT_TRUE(isFloatRight(-3.0F, 3.0F, 0, 0)); }

TEST(CudaMathComparison, TakesWhatIsNoNumberOrInfiniteOnEitherSide) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float odd : {nan, infinity, -infinity}) {
        EXPECT_TRUE(isFloatRight(odd, 1.0F, 0, 0));
        EXPECT_TRUE(isFloatRight(1.0F, odd, 0, 0));
    }
}

TEST(CudaMathTables, HaveTheTolerancesOfTheApproximateInstructions) {
    const std::pair<std::int32_t, std::uint32_t> expected[13] = {
        {0, 0},          {0, 0},          {0, 0},          {0, 0}, {0, 0},
        {0, 0},          {2, 0x343504F3}, {0, 0x34000000}, {0, 0}, {0, 0x34420300},
        {1, 0x3428E5A3}, {2, 0x35092FDF}, {2, 0x35092FDF}};
    for (std::size_t row = 0; row < 13; ++row) {
        EXPECT_EQ(floatAdvanced[row].maxUlps, expected[row].first) << row;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(floatAdvanced[row].absoluteTolerance), expected[row].second)
            << row;
    }
    for (const auto& row : floatStandard) {
        EXPECT_EQ(row.maxUlps, 0);
        EXPECT_EQ(row.absoluteTolerance, 0.0F);
    }
}

TEST(CudaMathTables, HoldTheseRowsAmongOthers) {
    EXPECT_EQ(integerStandard[3].expected, (std::array<std::int32_t, 5>{0, 0, 0, -8, 0})) << "towards zero";
    EXPECT_EQ(integerStandard[2].expected[3], -1300421124);
    EXPECT_EQ(integerAdvanced[8].expected, (std::array<std::int32_t, 5>{3, 1122, 10942, 335484, -87545}));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(floatAdvanced[12].expected[0]), 0xB33BBD2EU);
}

// A change of one bit of one operand, result or tolerance is a change of what cards are judged by. Many
// operands, like the larger of two of which the smaller is taken, could change without any result that shows
// it.
TEST(CudaMathTables, AreTheOnesThatCardsAreJudgedBy) {
    EXPECT_EQ(tableMark(integerStandard), 0xCC6D34928A49AAA9U);
    EXPECT_EQ(tableMark(integerAdvanced), 0x8095A1C801E3C071U);
    EXPECT_EQ(tableMark(floatStandard), 0x6F2B9D37F1BEB1B2U);
    EXPECT_EQ(tableMark(floatAdvanced), 0xA79861F5A869283EU);
}

TEST(CudaRandomWords, AreTheLowHalvesOfTheTwisterSeededWith43) {
    RandomWords words;
    EXPECT_EQ(words.next(), 0x33B37096U);
    EXPECT_EQ(~0x33B37096U, 0xCC4C8F69U);
}

} // namespace vexil::tests
