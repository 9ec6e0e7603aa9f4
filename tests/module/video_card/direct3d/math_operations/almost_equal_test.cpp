#include "module/video_card/direct3d/math_operations/almost_equal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vexil::module::video_card {
namespace {

template <typename T>
class AlmostEqual : public testing::Test {
protected:
    static constexpr T nan = std::numeric_limits<T>::quiet_NaN();
    static constexpr T infinity = std::numeric_limits<T>::infinity();

    static T stepsAbove(T value, int steps) {
        for (int i = 0; i < steps; ++i) {
            value = std::nextafter(value, infinity);
        }
        return value;
    }
    static bool exactly(T result, T expected) { return almostEqual(result, expected, T{0}, T{0}, 0); }
};

using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(AlmostEqual, Types);

TYPED_TEST(AlmostEqual, TakesTheSameNumber) {
    for (const TypeParam value : {TypeParam(0), TypeParam(1), TypeParam(-2.5), TypeParam(1e-30)}) {
        EXPECT_TRUE(this->exactly(value, value)) << value;
    }
}

TYPED_TEST(AlmostEqual, TakesZeroOfEitherSign) {
    EXPECT_TRUE(this->exactly(TypeParam(0), TypeParam(-0.0)));
    EXPECT_TRUE(this->exactly(TypeParam(-0.0), TypeParam(0)));
}

TYPED_TEST(AlmostEqual, RefusesTheNextNumberWithoutTolerance) {
    const TypeParam value = 1;
    EXPECT_FALSE(this->exactly(this->stepsAbove(value, 1), value));
    EXPECT_FALSE(this->exactly(std::nextafter(value, TypeParam(0)), value));
}

TYPED_TEST(AlmostEqual, TakesADifferenceThatIsNotGreaterThanTheAbsoluteTolerance) {
    EXPECT_TRUE(almostEqual(TypeParam(1.5), TypeParam(1), TypeParam(0.5), TypeParam(0), 0));
    EXPECT_TRUE(almostEqual(TypeParam(0.5), TypeParam(1), TypeParam(0.5), TypeParam(0), 0));
    EXPECT_FALSE(almostEqual(TypeParam(1.5), TypeParam(1), TypeParam(0.49), TypeParam(0), 0));
}

TYPED_TEST(AlmostEqual, TakesADifferenceThatIsNotGreaterThanTheRelativeTolerance) {
    EXPECT_TRUE(almostEqual(TypeParam(-5), TypeParam(-4), TypeParam(0), TypeParam(0.25), 0));
    EXPECT_FALSE(almostEqual(TypeParam(-5), TypeParam(-4), TypeParam(0), TypeParam(0.24), 0));
}

TYPED_TEST(AlmostEqual, HasNoRelativeToleranceWhereZeroIsExpected) {
    EXPECT_FALSE(almostEqual(TypeParam(1e-30), TypeParam(0), TypeParam(0), TypeParam(1000), 0));
}

TYPED_TEST(AlmostEqual, CountsStepsBetweenNeighbouringNumbers) {
    for (const TypeParam value : {TypeParam(1), TypeParam(1234.5), TypeParam(1.1e-20)}) {
        const auto result = this->stepsAbove(value, 3);
        EXPECT_TRUE(almostEqual(result, value, TypeParam(0), TypeParam(0), 3)) << value;
        EXPECT_FALSE(almostEqual(result, value, TypeParam(0), TypeParam(0), 2)) << value;
        EXPECT_TRUE(almostEqual(value, result, TypeParam(0), TypeParam(0), 3)) << value;
        EXPECT_TRUE(almostEqual(-result, -value, TypeParam(0), TypeParam(0), 3)) << value;
    }
}

TYPED_TEST(AlmostEqual, IsSatisfiedByAnyOneOfTheTolerances) {
    const TypeParam expected = 100;
    EXPECT_TRUE(almostEqual(TypeParam(101), expected, TypeParam(1), TypeParam(0), 0));
    EXPECT_TRUE(almostEqual(TypeParam(101), expected, TypeParam(0), TypeParam(0.01), 0));
    EXPECT_TRUE(almostEqual(this->stepsAbove(expected, 1), expected, TypeParam(0), TypeParam(0), 1));
}

TYPED_TEST(AlmostEqual, RefusesAFiniteResultOfTheWrongSign) {
    constexpr auto most = std::numeric_limits<std::int32_t>::max() / 4;
    EXPECT_FALSE(almostEqual(TypeParam(-3), TypeParam(3), TypeParam(0), TypeParam(0), most));
    EXPECT_FALSE(almostEqual(TypeParam(3), TypeParam(-3), TypeParam(0), TypeParam(0), most));
    EXPECT_FALSE(almostEqual(TypeParam(-1e-20), TypeParam(1e-20), TypeParam(0), TypeParam(0), most));
}

TYPED_TEST(AlmostEqual, TakesANumberOfTheWrongSignWithinTheAbsoluteTolerance) {
    EXPECT_TRUE(almostEqual(TypeParam(-1e-5), TypeParam(1e-5), TypeParam(1e-4), TypeParam(0), 0));
}

TYPED_TEST(AlmostEqual, TakesAnythingWithANaN) {
    EXPECT_TRUE(this->exactly(this->nan, TypeParam(1)));
    EXPECT_TRUE(this->exactly(-this->nan, TypeParam(1)));
    EXPECT_TRUE(this->exactly(TypeParam(1), this->nan));
    EXPECT_TRUE(this->exactly(this->nan, this->nan));
}

TYPED_TEST(AlmostEqual, TakesAnythingWithAnInfinity) {
    EXPECT_TRUE(this->exactly(this->infinity, TypeParam(1)));
    EXPECT_TRUE(this->exactly(-this->infinity, TypeParam(1)));
    EXPECT_TRUE(this->exactly(TypeParam(1), this->infinity));
    EXPECT_TRUE(this->exactly(this->infinity, -this->infinity));
}

TYPED_TEST(AlmostEqual, RefusesADenormalWhereZeroIsExpected) {
    EXPECT_FALSE(this->exactly(std::numeric_limits<TypeParam>::denorm_min(), TypeParam(0)));
}

TEST(AlmostEqualFloats, SeeTheSignAsTheHighestBitOfTheDistance) {
    // 0 and the smallest negative number are 2^31 + 1 patterns apart, and not 1.
    const float negative = -std::numeric_limits<float>::denorm_min();
    EXPECT_FALSE(almostEqual(negative, 0.0F, 0.0F, 0.0F, std::numeric_limits<std::int32_t>::max() - 128));
}

TEST(AlmostEqualDoubles, RefuseDifferentSignsWhateverTheDistance) {
    const double negative = -std::numeric_limits<double>::denorm_min();
    EXPECT_FALSE(almostEqual(negative, 0.0, 0.0, 0.0, std::numeric_limits<std::int32_t>::max()));
}

TEST(AlmostEqualDoubles, DoNotOverflowBetweenTheLargestAndTheSmallest) {
    constexpr auto largest = std::numeric_limits<double>::max();
    EXPECT_FALSE(almostEqual(largest, 1e-300, 0.0, 0.0, std::numeric_limits<std::int32_t>::max()));
}

TEST(AlmostEqualFloats, AskTheRelativeToleranceOfAReciprocalBeforeItsSteps) {
    // The reciprocal of 1.09999997e-20: three steps are within the relative tolerance, a thousand are within
    // nothing.
    const float expected = 9.09090903e+19F;
    const float relative = 4.76837158e-07F;
    const float near = std::nextafter(std::nextafter(std::nextafter(expected, 1e30F), 1e30F), 1e30F);
    EXPECT_TRUE(almostEqual(near, expected, 0.0F, relative, 1));
    EXPECT_FALSE(almostEqual(near, expected, 0.0F, 0.0F, 1));
    EXPECT_TRUE(almostEqual(std::nextafter(expected, 1e30F), expected, 0.0F, 0.0F, 1));
    EXPECT_FALSE(almostEqual(9.0910e+19F, expected, 0.0F, relative, 1));
}

TEST(AlmostEqualFloats, SaveTheCosineOfAboutHalfPiByItsAbsoluteTolerance) {
    const float expected = -4.37113883e-08F;
    EXPECT_TRUE(almostEqual(6.1e-05F, expected, 0.00079999998F, 0.0F, 0));
    EXPECT_FALSE(almostEqual(6.1e-05F, expected, 0.0F, 0.00079999998F, 0));
}

} // namespace
} // namespace vexil::module::video_card
