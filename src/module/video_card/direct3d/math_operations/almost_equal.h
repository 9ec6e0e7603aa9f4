#pragma once

#include <cstdint>

namespace vexil::module::video_card {

/// Whether a result counts as the expected value: within the absolute tolerance, or the relative one, or
/// `maxUlps` steps between neighbouring numbers. So does anything with a NaN or an infinity: what a card
/// makes of those is not under test. A finite result of the wrong sign does not.
[[nodiscard]] bool almostEqual(float result, float expected, float absoluteTolerance, float relativeTolerance,
                               std::int32_t maxUlps);
[[nodiscard]] bool almostEqual(double result, double expected, double absoluteTolerance,
                               double relativeTolerance, std::int32_t maxUlps);

} // namespace vexil::module::video_card
