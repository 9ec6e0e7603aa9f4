#pragma once

#include "module/video_card/direct3d/math_operations/math_op_row.h"

#include <array>
#include <cstdint>

namespace vexil::module::video_card {

using FloatRow = MathOpRow<float>;

/// How far a result may be from the expected value of its row; one of the three is enough.
struct FloatTolerance {
    std::int32_t maxUlps;
    float absolute;
    float relative;
};

// Nine significant digits, which give the exact bits.
// clang-format off
/// What `StandardFloatShader` computes.
inline constexpr std::array standardFloatRows = {
    FloatRow{"a + b", {1, 456, -1568.65796F, 335484.531F, -87545.3516F}, {2, 789, 4687.01562F, -38763.7812F, -642010.875F}, {}, {3, 1245, 3118.35767F, 296720.75F, -729556.25F}},
    FloatRow{"a * b", {1, 456, 10000, 335484.531F, -87545.3516F}, {2, 789, 4687.01562F, -38763.7812F, -642010.875F}, {}, {2, 359784, 46870156, -1.30046495e+10F, 5.62050662e+10F}},
    FloatRow{"a / b", {1, 456, -1568.65796F, 335484.531F, -87545.3516F}, {2, 789, 4687.01562F, -38763.7812F, -642010.875F}, {}, {0.5F, 0.577946782F, -0.3346816F, -8.65458775F, 0.136361167F}},
};
static_assert(standardFloatRows.size() == 3);

/// What `AdvancedFloatShader` computes.
inline constexpr std::array advancedFloatRows = {
    FloatRow{"exp: 2 ^ a", {1, 0.673399985F, 3, 4.48559999F, 10.7645597F}, {}, {}, {2, 1.59482706F, 8, 22.402689F, 1739.6239F}},
    FloatRow{"sqrt", {5.5F, 7.4000001F, 1.23000002F, 2.77999997F, 6.88999987F}, {}, {}, {2.34520793F, 2.72029424F, 1.10905361F, 1.66733325F, 2.62488103F}},
    FloatRow{"rsq: 1 / sqrt(a)", {5.5F, 7.4000001F, 1.23000002F, 2.77999997F, 6.88999987F}, {}, {}, {0.426401436F, 0.367607296F, 0.901669681F, 0.599760115F, 0.380969644F}},
    FloatRow{"log: log2(a)", {5.5F, 7.4000001F, 1.23000002F, 2.77999997F, 6.88999987F}, {}, {}, {2.45943165F, 2.88752532F, 0.298658341F, 1.4750849F, 2.78450394F}},
    FloatRow{"sin", {1.57079637F, 0.785398185F, 1.04719758F, 2.18166161F, 7.85398149F}, {}, {}, {1, 0.707106769F, 0.866025448F, 0.819151998F, 1}},
    FloatRow{"cos", {1.57079637F, 0.785398185F, 1.04719758F, 2.18166161F, 1.57079613F}, {}, {}, {-4.37113883e-08F, 0.707106769F, 0.49999997F, -0.57357645F, 1.3907092e-07F}},
    FloatRow{"frc: fraction of a", {3.21312327e-05F, 2.78999497e-11F, 9.3453455F, 2.18166161F, 2.99002242F}, {}, {}, {3.21312327e-05F, 2.78999497e-11F, 0.345345497F, 0.181661606F, 0.990022421F}},
    FloatRow{"mad: a * b + c", {1, 29.3238983F, 0.323333323F, 2.18166161F, 1}, {3, 17.3293133F, 49, 0, 0}, {40, 5.32369995F, 2.12345695F, 2.18166161F, 0}, {43, 513.486694F, 17.9667892F, 2.18166161F, 0}},
    FloatRow{"min", {1, -2, 0.123123102F, 3, 0.123123199F}, {1, -2, 1.09999997e-20F, 2, 0.243123204F}, {}, {1, -2, 1.09999997e-20F, 2, 0.123123199F}},
    FloatRow{"max", {1234.12341F, 11, 1.45599997F, 1.23456786e-07F, -10}, {12345, 11, 1.45599997F, 1.30000004e-07F, -10}, {}, {12345, 11, 1.45599997F, 1.30000004e-07F, -10}},
    FloatRow{"rcp: 1 / a", {1.09999997e-20F, 11, 1.23456786e-07F, 1.45599997F, 0.123123199F}, {}, {}, {9.09090903e+19F, 0.0909090936F, 8100000.5F, 0.686813176F, 8.12194633F}},
};
static_assert(advancedFloatRows.size() == 11);

/// By the row of the advanced table. The standard one tolerates nothing.
inline constexpr std::array advancedFloatTolerances = {
    FloatTolerance{3, 0, 4.76837158e-07F},               // exp
    FloatTolerance{1, 0, 0},                             // sqrt
    FloatTolerance{3, 0, 4.76837158e-07F},               // rsq
    FloatTolerance{0, 4.76837158e-07F, 4.76837158e-07F}, // log
    FloatTolerance{0, 0.00079999998F, 0},                // sin
    FloatTolerance{0, 0.00079999998F, 0},                // cos
    FloatTolerance{0, 0, 0},                             // frc
    FloatTolerance{1, 0, 0},                             // mad
    FloatTolerance{0, 0, 0},                             // min
    FloatTolerance{0, 0, 0},                             // max
    FloatTolerance{1, 0, 4.76837158e-07F},               // rcp
};
static_assert(advancedFloatTolerances.size() == advancedFloatRows.size());

/// The operands of `DotProductShader`: one pair of vectors of each width.
struct DotProductVectors {
    std::array<float, 2> vec2A;
    std::array<float, 2> vec2B;
    std::array<float, 3> vec3A;
    std::array<float, 3> vec3B;
    std::array<float, 4> vec4A;
    std::array<float, 4> vec4B;
};
inline constexpr DotProductVectors dotProductVectors = {
    {1221, 29.3238983F},
    {0.000133222202F, 11},
    {1221, 29.3238983F, 49},
    {0.000133222202F, 11, 2.18166161F},
    {11.0003443F, 290.111115F, 13.3222218F, 150.004349F},
    {0.0313322209F, -11, 15.2323561F, 1.00000048F},
};
inline constexpr std::array dotProductsExpected = {322.725555F, 429.626953F, -2837.94434F};
inline constexpr std::array<FloatTolerance, 3> dotProductTolerances = {{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}};
static_assert(dotProductsExpected.size() == dotProductTolerances.size());

// clang-format on
} // namespace vexil::module::video_card
