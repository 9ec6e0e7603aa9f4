// The arithmetic kernels as the host's compiler makes them for the simulated card.
#include "module/video_card/cuda/cuda_math_operations.h"
#include "module/video_card/cuda/kernels/kernel_support.h"
#include "module/video_card/cuda/kernels/kernel_table.h"
#include "module/video_card/cuda/kernels/operations.h"
#include "module/video_card/cuda/math_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <string_view>
#include <vector>

namespace vexil::tests {

namespace kernels = module::video_card::kernels;
using namespace module::video_card;

namespace {

constexpr std::uint32_t columns = mathValuesPerRow;

/// The results of `blocks` rows. A missing third operand is a null pointer.
template <typename T>
std::vector<T> runKernel(std::string_view name, std::uint32_t blocks, const std::vector<T>& first,
                         const std::vector<T>& second, const std::vector<T>* third) {
    const auto table = kernels::plain::kernelTable();
    const auto kernel = std::ranges::find(table, name, &kernels::HostKernel::name);
    EXPECT_NE(kernel, table.end());
    std::vector<T> results(std::size_t{blocks} * columns, T{77});
    const T *a = first.data(), *b = second.data(), *c = third == nullptr ? nullptr : third->data();
    T* out = results.data();
    void* arguments[] = {&a, &b, &c, &out};
    for (std::uint32_t block = 0; block < blocks; ++block) {
        for (std::uint32_t thread = 0; thread < columns; ++thread) {
            kernels::launchPosition = {block, columns, thread};
            kernel->run(arguments);
        }
    }
    return results;
}

/// Runs a table with `more` rows of ones behind it.
template <typename T, typename Rows>
std::vector<T> runTable(std::string_view name, const Rows& rows, std::uint32_t more, bool readsThird) {
    std::vector<T> operands[3];
    for (const auto& row : rows) {
        operands[0].insert(operands[0].end(), row.a.begin(), row.a.end());
        operands[1].insert(operands[1].end(), row.b.begin(), row.b.end());
        operands[2].insert(operands[2].end(), row.c.begin(), row.c.end());
    }
    const auto blocks = static_cast<std::uint32_t>(rows.size()) + more;
    for (auto& operand : operands) {
        operand.resize(std::size_t{blocks} * columns, T{1});
    }
    return runKernel<T>(name, blocks, operands[0], operands[1], readsThird ? &operands[2] : nullptr);
}

template <typename T, typename Rows>
void expectTable(std::string_view name, const Rows& rows, bool readsThird) {
    constexpr std::uint32_t behind = 2;
    const auto results = runTable<T>(name, rows, behind, readsThird);
    for (std::size_t i = 0; i < results.size(); ++i) {
        const std::size_t row = i / columns;
        if (row >= rows.size()) {
            EXPECT_EQ(std::bit_cast<std::uint32_t>(results[i]), 0U) << name << ", a block behind the table";
        } else if constexpr (std::is_same_v<T, float>) {
            const float expected = rows[row].expected[i % columns];
            EXPECT_TRUE(isFloatRight(results[i], expected, rows[row].maxUlps, rows[row].absoluteTolerance))
                << rows[row].operation << ", column " << i % columns << ": " << results[i];
            EXPECT_EQ(std::signbit(results[i]), std::signbit(expected));
        } else {
            EXPECT_EQ(results[i], rows[row].expected[i % columns]) << rows[row].operation;
        }
    }
}

} // namespace

TEST(CudaMathKernels, MakeTheStoredResultsAndZeroInBlocksBehindTheTable) {
    // The standard kernels are not given a third operand: they never read it.
    expectTable<std::int32_t>("cuda_kernel_standard_execute_integer", integerStandard, false);
    expectTable<std::int32_t>("cuda_kernel_advanced_execute_integer", integerAdvanced, true);
    expectTable<float>("cuda_kernel_standard_execute_float", floatStandard, false);
    expectTable<float>("cuda_kernel_advanced_execute_float", floatAdvanced, true);
}

TEST(CudaMathKernels, WrapAsTheCardDoes) {
    constexpr auto least = std::numeric_limits<int>::min(), most = std::numeric_limits<int>::max();
    using namespace kernels;
    EXPECT_EQ(add(most, 1), least);
    EXPECT_EQ(subtract(least, 1), most);
    EXPECT_EQ(multiplyLow(0x10001, 0x10001), 0x20001);
    EXPECT_EQ(negate(least), least);
    EXPECT_EQ(absolute(least), least);
    EXPECT_EQ(multiplyAdd(most, 2, 3), 1);
    EXPECT_EQ(divide(-7, 2), -3);
    EXPECT_EQ(remainder(-7, 2), -1);
    EXPECT_EQ(divide(least, -1), least);
    EXPECT_EQ(sumOfAbsoluteDifference(least, most, 0), -1);
}

// In these the sum lies next to the middle between two floats: rounded to double first, it would be the
// middle itself and go to the even one. Some C libraries do that.
TEST(CudaMathKernels, RoundAFusedMultiplyAddOnceOnEverySystem) {
    using kernels::fusedMultiplyAdd;
    const float x = 0x1.000002p-12F, y = 0x1.fffffcp-13F, odd = 0x1.000002p+0F;
    EXPECT_EQ(fusedMultiplyAdd(x, y, odd), odd);
    EXPECT_EQ(fusedMultiplyAdd(-x, y, odd), odd);
    EXPECT_EQ(fusedMultiplyAdd(x, -y, -odd), -odd);
    EXPECT_EQ(fusedMultiplyAdd(x, y, -odd), -odd);
    EXPECT_EQ(fusedMultiplyAdd(29.3238983F, 17.3293133F, 5.32369995F), 513.486694F);
    // Beside what one float can hold of the product.
    EXPECT_EQ(fusedMultiplyAdd(0x1.000002p+0F, 0x1.000002p+0F, -0x1.000004p+0F), 0x1p-46F);
}

TEST(CudaMathKernels, FuseInfinitiesAndNumbersThatAreNone) {
    using kernels::fusedMultiplyAdd;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(fusedMultiplyAdd(infinity, 1, 1), infinity);
    EXPECT_EQ(fusedMultiplyAdd(1, 1, -infinity), -infinity);
    EXPECT_TRUE(std::isnan(fusedMultiplyAdd(infinity, 0, 1)));
    EXPECT_TRUE(std::isnan(fusedMultiplyAdd(infinity, 1, -infinity)));
    EXPECT_TRUE(std::isnan(fusedMultiplyAdd(std::numeric_limits<float>::quiet_NaN(), 1, 1)));
    EXPECT_EQ(fusedMultiplyAdd(std::numeric_limits<float>::max(), 2, 0), infinity);
}

} // namespace vexil::tests
