// What the arithmetic tests make of a single element of the results that come back from the card.
#include "cuda_fixture.h"

#include "module/video_card/cuda/math_tables.h"

#include <bit>
#include <cmath>

namespace vexil::tests {

using namespace module::video_card;

namespace {

constexpr std::size_t columns = mathValuesPerRow;

std::uint32_t bitsOf(float value) { return std::bit_cast<std::uint32_t>(value); }
std::uint32_t bitsOf(std::int32_t value) { return std::bit_cast<std::uint32_t>(value); }

/// Wrong by more than any tolerance, with the sign that the value has.
std::uint32_t wrongBits(float right) { return bitsOf(std::copysign(2 * std::fabs(right) + 1, right)); }
std::uint32_t wrongBits(std::int32_t right) { return bitsOf(right) + 1; }

/// An element of the advanced float table, and how many steps of its bit pattern it may be away.
struct Reach {
    std::size_t row, column;
    std::uint32_t steps;
};

} // namespace

class CudaMathElement : public CudaTest {
protected:
    /// Runs a test on a healthy card, in which that element of the results of that kernel is replaced before
    /// the host reads it.
    std::uint8_t runWithElement(CudaTestId id, std::string_view kernel, std::size_t element,
                                std::uint32_t bits) {
        std::uint32_t* out = nullptr;
        driver().observeLaunches([&](const simulated::cuda::CardLaunch& launch) {
            if (launch.kernel == kernel) {
                // Addresses of the simulated card are addresses of this process.
                out = *static_cast<std::uint32_t**>(launch.arguments[3]);
            }
        });
        driver().observe([&](const char* call) {
            if (out != nullptr && std::string_view(call) == "cuMemcpyDtoH_v2") {
                out[element] = bits;
                out = nullptr;
            }
        });
        reporter = {};
        return run(id);
    }

    template <typename Rows>
    void expectEveryElementSeen(CudaTestId id, std::string_view kernel, const Rows& rows) {
        for (std::size_t element = 0; element < rows.size() * columns; ++element) {
            SCOPED_TRACE(testing::Message() << kernel << ", element " << element);
            const auto right = rows[element / columns].expected[element % columns];
            EXPECT_EQ(runWithElement(id, kernel, element, wrongBits(right)), core::TestResult::Failed);
            EXPECT_EQ(reporter.events, (std::vector<std::string>{"100", "MATH_OP_TEST_FAIL_MESSAGE"}));
            EXPECT_EQ(runWithElement(id, kernel, element, bitsOf(right)), core::TestResult::Passed);
        }
    }
};

TEST_F(CudaMathElement, IsComparedInEveryRowAndColumnOfEveryTable) {
    expectEveryElementSeen(standardMath, "cuda_kernel_standard_execute_integer", integerStandard);
    expectEveryElementSeen(standardMath, "cuda_kernel_standard_execute_float", floatStandard);
    expectEveryElementSeen(advancedMath, "cuda_kernel_advanced_execute_integer", integerAdvanced);
    expectEveryElementSeen(advancedMath, "cuda_kernel_advanced_execute_float", floatAdvanced);
}

TEST_F(CudaMathElement, IsJudgedByTheTolerancesOfItsRow) {
    const Reach reaches[] = {
        // Large enough that one step is beyond the absolute tolerance of the row: the steps count.
        {5, 1, 0},
        {6, 4, 2},
        {7, 2, 0},
        {8, 0, 0},
        {10, 0, 1},
        // Small enough that the absolute tolerance reaches further than the steps do.
        {7, 3, 2},
        {9, 2, 3},
        {10, 2, 5},
        {11, 1, 8},
        {12, 1, 8},
    };
    for (const Reach& reach : reaches) {
        const std::uint32_t right = bitsOf(floatAdvanced[reach.row].expected[reach.column]);
        const auto resultAt = [&](std::uint32_t bits) {
            return runWithElement(advancedMath, "cuda_kernel_advanced_execute_float",
                                  reach.row * columns + reach.column, bits);
        };
        SCOPED_TRACE(testing::Message() << "row " << reach.row << ", column " << reach.column);
        EXPECT_EQ(resultAt(right + reach.steps), core::TestResult::Passed);
        EXPECT_EQ(resultAt(right - reach.steps), core::TestResult::Passed);
        EXPECT_EQ(resultAt(right + reach.steps + 1), core::TestResult::Failed);
        EXPECT_EQ(resultAt(right - reach.steps - 1), core::TestResult::Failed);
    }
}

} // namespace vexil::tests
