#include "module/video_card/direct3d/math_operations/almost_equal.h"

#include <bit>
#include <cmath>
#include <cstdlib>

namespace vexil::module::video_card {

namespace {

/// The order of the tests is required. A NaN among the operands is never greater than a tolerance, and so
/// passes the first of them.
template <typename T>
bool isWithinTolerances(T result, T expected, T absoluteTolerance, T relativeTolerance) {
    const T difference = std::abs(result - expected);
    if (!(difference > absoluteTolerance) || !(std::abs(difference / expected) > relativeTolerance)) {
        return true;
    }
    return std::isnan(result) || std::isnan(expected) || std::isinf(result) || std::isinf(expected);
}

} // namespace

bool almostEqual(float result, float expected, float absoluteTolerance, float relativeTolerance,
                 std::int32_t maxUlps) {
    if (isWithinTolerances(result, expected, absoluteTolerance, relativeTolerance)) {
        return true;
    }
    // The sign is the highest bit of the pattern, so numbers of different signs are very far apart.
    const std::int64_t steps = static_cast<std::int64_t>(std::bit_cast<std::uint32_t>(result)) -
                               static_cast<std::int64_t>(std::bit_cast<std::uint32_t>(expected));
    return !(static_cast<float>(std::abs(steps)) > static_cast<float>(maxUlps));
}

bool almostEqual(double result, double expected, double absoluteTolerance, double relativeTolerance,
                 std::int32_t maxUlps) {
    if (isWithinTolerances(result, expected, absoluteTolerance, relativeTolerance)) {
        return true;
    }
    // 64 bits have no room for the distance between numbers of different signs.
    if (std::signbit(result) != std::signbit(expected)) {
        return false;
    }
    const std::int64_t steps = std::bit_cast<std::int64_t>(result) - std::bit_cast<std::int64_t>(expected);
    return !(static_cast<double>(std::abs(steps)) > static_cast<double>(maxUlps));
}

} // namespace vexil::module::video_card
