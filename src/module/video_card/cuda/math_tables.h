#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// The operands and results of the arithmetic tests. A row is one operation of a kernel, and its number is the
// number of the block that does it; a column is one thread. Expected values are stored, never computed on the
// host, which could be wrong in the same way. Floats have nine significant digits, which give their exact
// bits back.
namespace vexil::module::video_card {

inline constexpr std::size_t mathValuesPerRow = 5;

template <typename T>
struct MathRow {
    const char* operation; ///< for the reader
    std::array<T, mathValuesPerRow> a, b, c, expected;
    // How far a result of an approximate instruction may lie from the expected one; see `isFloatRight`.
    std::int32_t maxUlps = 0;
    float absoluteTolerance = 0;
};

// clang-format off
inline constexpr std::array integerStandard = {
    MathRow<std::int32_t>{"a + b", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {}, {3, 1245, 3119, 296721, -729555}},
    MathRow<std::int32_t>{"a - b", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {}, {-1, -333, -6255, 374247, 554465}},
    MathRow<std::int32_t>{"a * b", {1, 456, 10000, 33548, -87545}, {2, 789, 4687, -38763, -6420}, {}, {2, 359784, 46870000, -1300421124, 562038900}},
    MathRow<std::int32_t>{"a / b", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {}, {0, 0, 0, -8, 0}},
};
static_assert(integerStandard.size() == 4);

inline constexpr std::array integerAdvanced = {
    MathRow<std::int32_t>{"abs(a)", {1, -456, -1568, -335484, 87545}, {}, {}, {1, 456, 1568, 335484, 87545}},
    MathRow<std::int32_t>{"-a", {1, 456, -1568, 335484, -87545}, {}, {}, {-1, -456, 1568, -335484, 87545}},
    MathRow<std::int32_t>{"min(a, b)", {1, -2, 0, 3, 0}, {1, -1, 0, 2, 0}, {}, {1, -2, 0, 2, 0}},
    MathRow<std::int32_t>{"max(a, b)", {1234, 11, 1, 0, -10}, {12345, 10, 1, 0, -10}, {}, {12345, 11, 1, 0, -10}},
    MathRow<std::int32_t>{"a * b + c", {1, 29, 0, 2, 1}, {3, 17, 49, 0, 0}, {40, 5, 2, 2, 0}, {43, 498, 2, 2, 0}},
    MathRow<std::int32_t>{"a + b", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {}, {3, 1245, 3119, 296721, -729555}},
    MathRow<std::int32_t>{"a - b", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {}, {-1, -333, -6255, 374247, 554465}},
    MathRow<std::int32_t>{"a % b", {7, 65456, 1568, 335484, 2287545}, {2, 789, 4687, 38763, 642010}, {}, {1, 758, 1568, 25380, 361515}},
    MathRow<std::int32_t>{"abs(a - b) + c", {1, 456, -1568, 335484, -87545}, {2, 789, 4687, -38763, -642010}, {2, 789, 4687, -38763, -642010}, {3, 1122, 10942, 335484, -87545}},
};
static_assert(integerAdvanced.size() == 9);

inline constexpr std::array floatStandard = {
    MathRow<float>{"a + b", {1.0f, 456.0f, -1568.65796f, 335484.531f, -87545.3516f}, {2.0f, 789.0f, 4687.01562f, -38763.7812f, -642010.875f}, {}, {3.0f, 1245.0f, 3118.35767f, 296720.75f, -729556.25f}},
    MathRow<float>{"a - b", {1.0f, 456.0f, -1568.65796f, 335484.531f, -87545.3516f}, {2.0f, 789.0f, 4687.01562f, -38763.7812f, -642010.875f}, {}, {-1.0f, -333.0f, -6255.67383f, 374248.312f, 554465.5f}},
    MathRow<float>{"a * b", {1.0f, 456.0f, 10000.0f, 335484.531f, -87545.3516f}, {2.0f, 789.0f, 4687.01562f, -38763.7812f, -642010.875f}, {}, {2.0f, 359784.0f, 46870156.0f, -1.30046495e+10f, 5.62050662e+10f}},
    MathRow<float>{"a / b", {1.0f, 456.0f, -1568.65796f, 335484.531f, -87545.3516f}, {2.0f, 789.0f, 4687.01562f, -38763.7812f, -642010.875f}, {}, {0.5f, 0.577946782f, -0.3346816f, -8.65458775f, 0.136361167f}},
};
static_assert(floatStandard.size() == 4);

inline constexpr std::array floatAdvanced = {
    MathRow<float>{"abs(a)", {1.0f, -456.0f, -1568.65796f, -335484.531f, 87545.3516f}, {}, {}, {1.0f, 456.0f, 1568.65796f, 335484.531f, 87545.3516f}},
    MathRow<float>{"-a", {1.0f, 456.0f, -1568.65796f, 335484.531f, -87545.3516f}, {}, {}, {-1.0f, -456.0f, 1568.65796f, -335484.531f, 87545.3516f}},
    MathRow<float>{"min(a, b)", {1.0f, -2.0f, 0.123123102f, 3.0f, 0.123123199f}, {1.0f, -2.0f, 1.09999997e-20f, 2.0f, 0.243123204f}, {}, {1.0f, -2.0f, 1.09999997e-20f, 2.0f, 0.123123199f}},
    MathRow<float>{"max(a, b)", {1234.12341f, 11.0f, 1.45599997f, 1.23456786e-07f, -10.0f}, {12345.0f, 11.0f, 1.45599997f, 1.30000004e-07f, -10.0f}, {}, {12345.0f, 11.0f, 1.45599997f, 1.30000004e-07f, -10.0f}},
    MathRow<float>{"fused a * b + c", {1.0f, 29.3238983f, 0.323333323f, 2.18166161f, 1.0f}, {3.0f, 17.3293133f, 49.0f, 0.0f, 0.0f}, {40.0f, 5.32369995f, 2.12345695f, 2.18166161f, 0.0f}, {43.0f, 513.486694f, 17.9667892f, 2.18166161f, 0.0f}},
    MathRow<float>{"a * b + c", {1.0f, 29.3238983f, 0.323333323f, 2.18166161f, 1.0f}, {3.0f, 17.3293133f, 49.0f, 0.0f, 0.0f}, {40.0f, 5.32369995f, 2.12345695f, 2.18166161f, 0.0f}, {43.0f, 513.486694f, 17.9667892f, 2.18166161f, 0.0f}},
    MathRow<float>{"2 ^ a, approximate", {1.0f, 0.673399985f, 3.0f, 4.48559999f, 10.7645597f}, {}, {}, {2.0f, 1.59482706f, 8.0f, 22.402689f, 1739.6239f}, 2, 1.68587391e-07f},
    MathRow<float>{"1 / a", {1.09999997e-20f, 11.0f, 1.23456786e-07f, 1.45599997f, 0.123123199f}, {}, {}, {9.09090903e+19f, 0.0909090936f, 8100000.5f, 0.686813176f, 8.12194633f}, 0, 1.1920929e-07f},
    MathRow<float>{"sqrt(a)", {5.5f, 7.4000001f, 1.23000002f, 2.77999997f, 6.88999987f}, {}, {}, {2.34520793f, 2.72029424f, 1.10905361f, 1.66733325f, 2.62488103f}},
    MathRow<float>{"1 / sqrt(a), approximate", {5.5f, 7.4000001f, 1.23000002f, 2.77999997f, 6.88999987f}, {}, {}, {0.426401436f, 0.367607296f, 0.901669681f, 0.599760115f, 0.380969644f}, 0, 1.80687493e-07f},
    MathRow<float>{"log2(a), approximate", {5.5f, 7.4000001f, 1.23000002f, 2.77999997f, 6.88999987f}, {}, {}, {2.45943165f, 2.88752532f, 0.298658341f, 1.4750849f, 2.78450394f}, 1, 1.57297606e-07f},
    MathRow<float>{"sin(a), approximate", {1.57079637f, 0.785398185f, 1.04719758f, 2.18166161f, 7.85398149f}, {}, {}, {1.0f, 0.707106769f, 0.866025448f, 0.819151998f, 1.0f}, 2, 5.11061387e-07f},
    MathRow<float>{"cos(a), approximate", {1.57079637f, 0.785398185f, 1.04719758f, 2.18166161f, 1.57079613f}, {}, {}, {-4.37113883e-08f, 0.707106769f, 0.49999997f, -0.57357645f, 1.3907092e-07f}, 2, 5.11061387e-07f},
};
static_assert(floatAdvanced.size() == 13);
// clang-format on

} // namespace vexil::module::video_card
