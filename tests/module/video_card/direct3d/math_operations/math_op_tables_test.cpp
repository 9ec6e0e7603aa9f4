#include "module/video_card/direct3d/math_operations/almost_equal.h"
#include "module/video_card/direct3d/math_operations/double_tables.h"
#include "module/video_card/direct3d/math_operations/double_tolerances.h"
#include "module/video_card/direct3d/math_operations/float_tables.h"
#include "module/video_card/direct3d/math_operations/int_tables.h"
#include "support/table_mark.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <span>
#include <string>
#include <vector>

// The stored results are those of the operations, as the processor of this machine computes them.
namespace vexil::module::video_card {
namespace {

template <typename T>
using Operation = std::function<T(T a, T b, T c)>;

template <typename T>
void expectComputed(std::span<const MathOpRow<T>> rows, const std::vector<Operation<T>>& operations,
                    const std::function<bool(std::size_t row, T computed, T stored)>& isRight) {
    ASSERT_EQ(rows.size(), operations.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < mathOpColumns; ++column) {
            const auto& r = rows[row];
            const T computed = operations[row](r.a[column], r.b[column], r.c[column]);
            EXPECT_TRUE(isRight(row, computed, r.expected[column]))
                << r.operation << ", column " << column << ": " << computed << ", stored "
                << r.expected[column];
        }
    }
}

template <typename T>
T sum(T a, T b, T) {
    return a + b;
}
template <typename T>
T product(T a, T b, T) {
    return a * b;
}
template <typename T>
T quotient(T a, T b, T) {
    return a / b;
}
template <typename T>
T smaller(T a, T b, T) {
    return std::min(a, b);
}
template <typename T>
T larger(T a, T b, T) {
    return std::max(a, b);
}

std::int32_t lowProduct(std::int32_t a, std::int32_t b, std::int32_t) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::int64_t{a} * b));
}

template <typename T>
bool isSame(std::size_t, T computed, T stored) {
    return computed == stored;
}

TEST(IntTables, HoldTheResultsOfTheirOperations) {
    expectComputed<std::int32_t>(standardIntRows, {sum<std::int32_t>, lowProduct, quotient<std::int32_t>},
                                 isSame<std::int32_t>);
    expectComputed<std::int32_t>(
        advancedIntRows,
        {[](auto a, auto b, auto c) { return a * b + c; }, smaller<std::int32_t>, larger<std::int32_t>},
        isSame<std::int32_t>);
}

TEST(FloatTables, HoldTheResultsOfTheirOperations) {
    expectComputed<float>(standardFloatRows, {sum<float>, product<float>, quotient<float>}, isSame<float>);
    expectComputed<float>(
        advancedFloatRows,
        {[](float a, float, float) { return std::exp2(a); },
         [](float a, float, float) { return std::sqrt(a); },
         [](float a, float, float) { return 1.0F / std::sqrt(a); },
         [](float a, float, float) { return std::log2(a); },
         [](float a, float, float) { return std::sin(a); }, [](float a, float, float) { return std::cos(a); },
         [](float a, float, float) { return a - std::floor(a); },
         [](float a, float b, float c) { return a * b + c; }, smaller<float>, larger<float>,
         [](float a, float, float) { return 1.0F / a; }},
        [](std::size_t row, float computed, float stored) {
            const auto& tolerance = advancedFloatTolerances[row];
            return almostEqual(computed, stored, tolerance.absolute, tolerance.relative, tolerance.maxUlps);
        });
}

TEST(FloatTables, HoldTheDotProductsOfTheirVectors) {
    const auto& v = dotProductVectors;
    const auto dot = [](std::span<const float> a, std::span<const float> b) {
        double total = 0;
        for (std::size_t i = 0; i < a.size(); ++i) {
            total += double{a[i]} * double{b[i]};
        }
        return static_cast<float>(total);
    };
    const float products[] = {dot(v.vec2A, v.vec2B), dot(v.vec3A, v.vec3B), dot(v.vec4A, v.vec4B)};
    for (std::size_t i = 0; i < dotProductsExpected.size(); ++i) {
        EXPECT_TRUE(almostEqual(products[i], dotProductsExpected[i], 0.0F, 0.0F, 1)) << i;
    }
}

TEST(FloatTables, HoldTheExactBitsOfTheDotProducts) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(dotProductsExpected[0]), 0x43A15CDFU);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(dotProductsExpected[1]), 0x43D6D040U);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(dotProductsExpected[2]), 0xC5315F1CU);
}

TEST(FloatTables, HoldTheExactBitsOfTheVectors) {
    const auto bits = [](const auto& vector) {
        std::vector<std::uint32_t> words;
        for (const float component : vector) {
            words.push_back(std::bit_cast<std::uint32_t>(component));
        }
        return words;
    };
    using Words = std::vector<std::uint32_t>;
    const auto& v = dotProductVectors;
    EXPECT_EQ(bits(v.vec2A), (Words{0x4498A000, 0x41EA9758}));
    EXPECT_EQ(bits(v.vec2B), (Words{0x390BB190, 0x41300000}));
    EXPECT_EQ(bits(v.vec3A), (Words{0x4498A000, 0x41EA9758, 0x42440000}));
    EXPECT_EQ(bits(v.vec3B), (Words{0x390BB190, 0x41300000, 0x400BA058}));
    EXPECT_EQ(bits(v.vec4A), (Words{0x41300169, 0x43910E39, 0x415527D2, 0x4316011D}));
    EXPECT_EQ(bits(v.vec4B), (Words{0x3D005637, 0xC1300000, 0x4173B7BB, 0x3F800004}));
}

TEST(FloatTables, HoldTheExactBitsOfTheTolerances) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(advancedFloatTolerances[0].relative), 0x35000000U);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(advancedFloatTolerances[3].absolute), 0x35000000U);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(advancedFloatTolerances[4].absolute), 0x3A51B717U);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(advancedFloatTolerances[5].absolute), 0x3A51B717U);
}

TEST(FloatTables, GiveATinyNumberAsItsOwnFraction) {
    const auto& fraction = advancedFloatRows[6];
    EXPECT_EQ(fraction.a[0], fraction.expected[0]);
    EXPECT_EQ(fraction.a[1], fraction.expected[1]);
    EXPECT_LT(fraction.a[1], 1e-10F);
}

TEST(DoubleTables, HoldTheResultsOfTheirOperations) {
    expectComputed<double>(standardDoubleRows, {sum<double>, product<double>, quotient<double>},
                           isSame<double>);
    expectComputed<double>(advancedDoubleRows,
                           {[](double a, double b, double c) { return std::fma(a, b, c); }, smaller<double>,
                            larger<double>, [](double a, double, double) { return 1 / a; }},
                           isSame<double>);
}

// A change of one bit of one operand or result is a change of what cards are judged by, and many of them
// could change without any result that shows it.
TEST(MathOpTables, AreTheOnesThatCardsAreJudgedBy) {
    using tests::tableMark;
    EXPECT_EQ(tableMark(standardIntRows), 0xE1C82AF89C3A8A24U);
    EXPECT_EQ(tableMark(advancedIntRows), 0x8CFBE7F651FAB4D4U);
    EXPECT_EQ(tableMark(standardFloatRows), 0xF6E1E38B63465F93U);
    EXPECT_EQ(tableMark(advancedFloatRows), 0x61F6C77EB74AF2BDU);
    EXPECT_EQ(tableMark(standardDoubleRows), 0x4D88B58FBBAF7271U);
    EXPECT_EQ(tableMark(advancedDoubleRows), 0x78DE3ED1E124B502U);
}

TEST(MathOpTables, HaveTheTolerancesOfTheirRows) {
    struct Row {
        std::int32_t maxUlps;
        std::uint32_t absolute, relative;
    };
    constexpr Row expected[11] = {
        {3, 0, 0x35000000}, {1, 0, 0},          {3, 0, 0x35000000}, {0, 0x35000000, 0x35000000},
        {0, 0x3A51B717, 0}, {0, 0x3A51B717, 0}, {0, 0, 0},          {1, 0, 0},
        {0, 0, 0},          {0, 0, 0},          {1, 0, 0x35000000}};
    ASSERT_EQ(advancedFloatTolerances.size(), std::size(expected));
    for (std::size_t row = 0; row < std::size(expected); ++row) {
        const auto& tolerance = advancedFloatTolerances[row];
        EXPECT_EQ(tolerance.maxUlps, expected[row].maxUlps) << row;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(tolerance.absolute), expected[row].absolute) << row;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(tolerance.relative), expected[row].relative) << row;
    }
    for (const auto& tolerance : dotProductTolerances) {
        EXPECT_EQ(tolerance.maxUlps, 1);
        EXPECT_EQ(tolerance.absolute, 0.0F);
        EXPECT_EQ(tolerance.relative, 0.0F);
    }
}

TEST(MathOpTables, HaveOperandsRowAfterRow) {
    MathOpTable<std::int32_t> table;
    table.load(advancedIntRows);
    EXPECT_EQ(table.rowCount, 3U);
    EXPECT_EQ(table.valuesPerRow, 5U);
    EXPECT_EQ(table.input0, (std::vector<std::int32_t>{1, 29, 0, 2, 1, 1, -2, 0, 3, 0, 1234, 11, 1, 0, -10}));
    EXPECT_EQ(table.input1,
              (std::vector<std::int32_t>{3, 17, 49, 0, 0, 1, -1, 0, 2, 0, 12345, 10, 1, 0, -10}));
    EXPECT_EQ(table.input2, (std::vector<std::int32_t>{40, 5, 2, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(table.expected,
              (std::vector<std::int32_t>{43, 498, 2, 2, 0, 1, -2, 0, 2, 0, 12345, 11, 1, 0, -10}));
    table.load(standardIntRows);
    EXPECT_EQ(table.input0.size(), 15U) << "a table replaces the one before";
}

TEST(DoubleTolerances, BeginWithAFirstEntryThatToleratesNothing) {
    const DoubleTolerances tolerances;
    EXPECT_EQ(tolerances.maxUlps, (std::array<std::int32_t, 4>{-1, 0, 0, 0}));
    EXPECT_EQ(tolerances.absolute, (std::array<double, 4>{-1, 0, 0, 0}));
    EXPECT_EQ(tolerances.relative, (std::array<double, 4>{-1, 0, 0, 0}));
    EXPECT_FALSE(
        almostEqual(1.0, 1.0, tolerances.absoluteOf(0), tolerances.relativeOf(0), tolerances.maxUlpsOf(0)));
}

TEST(DoubleTolerances, AreLookedUpByElementAndNotByRow) {
    const DoubleTolerances tolerances{advancedDoubleMaxUlps, {}, {}};
    for (std::size_t element = 0; element < 20; ++element) {
        EXPECT_EQ(tolerances.maxUlpsOf(element), element == 3 ? 1 : 0) << element;
        EXPECT_EQ(tolerances.absoluteOf(element), 0) << element;
        EXPECT_EQ(tolerances.relativeOf(element), 0) << element;
    }
}

TEST(DoubleTolerances, AreOneRunOfMemory) {
    // Bits that tell the words apart; the absolute tolerances begin at word 4, the relative ones at word 12.
    const DoubleTolerances tolerances{{10, 11, 12, 13},
                                      {std::bit_cast<double>(0x0000000500000004), 1.5, 2.5, 3.5},
                                      {4.5, 5.5, 6.5, std::bit_cast<double>(0x0000001300000012)}};
    EXPECT_EQ(tolerances.maxUlpsOf(3), 13);
    EXPECT_EQ(tolerances.maxUlpsOf(4), 4);
    EXPECT_EQ(tolerances.maxUlpsOf(5), 5);
    EXPECT_EQ(tolerances.maxUlpsOf(18), 0x12);
    EXPECT_EQ(tolerances.maxUlpsOf(19), 0x13);
    EXPECT_EQ(tolerances.absoluteOf(3), 3.5);
    EXPECT_EQ(tolerances.absoluteOf(4), 4.5);
}

TEST(DoubleTolerances, AreZeroBehindTheirMemory) {
    const DoubleTolerances tolerances{{1, 1, 1, 1}, {1, 1, 1, 1}, {1, 1, 1, 1}};
    EXPECT_EQ(tolerances.maxUlpsOf(20), 0);
    EXPECT_EQ(tolerances.absoluteOf(7), 1);
    EXPECT_EQ(tolerances.absoluteOf(8), 0);
    EXPECT_EQ(tolerances.relativeOf(3), 1);
    EXPECT_EQ(tolerances.relativeOf(4), 0);
}

} // namespace
} // namespace vexil::module::video_card
