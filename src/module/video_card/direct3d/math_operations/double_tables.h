#pragma once

#include "module/video_card/direct3d/math_operations/math_op_row.h"

#include <array>
#include <cstdint>

namespace vexil::module::video_card {

using DoubleRow = MathOpRow<double>;

// Seventeen significant digits, which give the exact bits.
// clang-format off
/// What `StandardDoubleShader` computes.
inline constexpr std::array standardDoubleRows = {
    DoubleRow{"a + b", {1, 456, -1568.6500000000001, 335484.53999999998, -87545.350000000006}, {2, 789, 4687.0154000000002, -38763.779999999999, -642010.83999999997}, {}, {3, 1245, 3118.3654000000001, 296720.76000000001, -729556.18999999994}},
    DoubleRow{"a * b", {1, 456, 10000, 335484.53125, -87545.354000000007}, {2, 789, 4687.015625, -38763.78125, -642010.84499999997}, {}, {2, 359784, 46870156.25, -13004648982.133789, 56205066697.364128}},
    DoubleRow{"a / b", {1, 456, -1568.6500000000001, 335484.53999999998, -87545.350000000006}, {2, 789, 4687.0150000000003, -38763.779999999999, -642010.83999999997}, {}, {0.5, 0.57794676806083645, -0.33467996155335539, -8.6545878652701056, 0.13636117109798335}},
};
static_assert(standardDoubleRows.size() == 3);

/// What `AdvancedDoubleShader` computes.
inline constexpr std::array advancedDoubleRows = {
    DoubleRow{"fused a * b + c", {1, 29.323898989, 0.32333333332999997, 2.1816615649929121, 1}, {3, 17.329314149999998, 49, 0, 0}, {40, 5.3236999999555001, 2.1234569955499998, 2.1816615649929121, 0}, {43, 513.48675768320379, 17.966790328719998, 2.1816615649929121, 0}},
    DoubleRow{"min(a, b)", {1.0000000001531615, -2, 0.1231231, 3, 0.1231232}, {1.0000000001531615, -1.9999999999999998, 9.9999999999999995e-21, 2, 0.24312320000000001}, {}, {1.0000000001531615, -2, 9.9999999999999995e-21, 2, 0.1231232}},
    DoubleRow{"max(a, b)", {1234.1233999999999, 11, 1.456, 1.2345678912344999e-07, -10.000000111111111}, {12345, 11, 1.456, 1.3e-07, -10}, {}, {12345, 11, 1.456, 1.3e-07, -10}},
    DoubleRow{"1 / a", {9.9999999999999995e-21, 11, 1.2345678912344999e-07, 1.456, 0.1231232}, {}, {}, {1e+20, 0.090909090909090912, 8100000.065610447, 0.68681318681318682, 8.1219461482482593}},
};
static_assert(advancedDoubleRows.size() == 4);

/// ULPs by the number of the element. The one of the last entry was put in for the fourth row and holds for the
/// fourth element: hosts know the test so.
inline constexpr std::array<std::int32_t, 4> advancedDoubleMaxUlps = {0, 0, 0, 1};
static_assert(advancedDoubleMaxUlps.size() == advancedDoubleRows.size());

// clang-format on
} // namespace vexil::module::video_card
