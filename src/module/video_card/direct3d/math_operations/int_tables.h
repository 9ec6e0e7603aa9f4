#pragma once

#include "module/video_card/direct3d/math_operations/math_op_row.h"

#include <array>
#include <cstdint>

namespace vexil::module::video_card {

using IntRow = MathOpRow<std::int32_t>;

// clang-format off
/// What `StandardIntShader` computes.
inline constexpr std::array standardIntRows = {
    IntRow{"a + b", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {}, {3, 1245, 3119, 296721, -729555}},
    IntRow{"a * b", {1, 456, 10000, 33548, -87545}, {2, 789, 4687, -38763, -6420}, {}, {2, 359784, 46870000, -1300421124, 562038900}},
    IntRow{"a / b", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {}, {0, 0, 0, -8, 0}},
};
static_assert(standardIntRows.size() == 3);

/// What `AdvancedIntShader` computes.
inline constexpr std::array advancedIntRows = {
    IntRow{"a * b + c", {1, 29, 0, 2, 1}, {3, 17, 49, 0, 0}, {40, 5, 2, 2, 0}, {43, 498, 2, 2, 0}},
    IntRow{"min(a, b)", {1, -2, 0, 3, 0}, {1, -1, 0, 2, 0}, {}, {1, -2, 0, 2, 0}},
    IntRow{"max(a, b)", {1234, 11, 1, 0, -10}, {12345, 10, 1, 0, -10}, {}, {12345, 11, 1, 0, -10}},
};
static_assert(advancedIntRows.size() == 3);

// clang-format on
} // namespace vexil::module::video_card
