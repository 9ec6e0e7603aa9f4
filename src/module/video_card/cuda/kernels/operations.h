// The operations of the arithmetic tests. On the card each is one named PTX instruction, since it is that
// instruction's unit which the test proves; a compiler left to itself would pick another or fold it away.
#pragma once

#include "kernel_support.h"

VEXIL_KERNELS_BEGIN

#if defined(__CUDA__)

#define VEXIL_UNARY(name, type, registers, instruction)                                                      \
    VEXIL_INLINE type name(type x) {                                                                         \
        type result;                                                                                         \
        asm volatile(instruction " %0, %1;" : "=" registers(result) : registers(x));                         \
        return result;                                                                                       \
    }
#define VEXIL_BINARY(name, type, registers, instruction)                                                     \
    VEXIL_INLINE type name(type x, type y) {                                                                 \
        type result;                                                                                         \
        asm volatile(instruction " %0, %1, %2;" : "=" registers(result) : registers(x), registers(y));       \
        return result;                                                                                       \
    }
#define VEXIL_TERNARY(name, type, registers, instruction)                                                    \
    VEXIL_INLINE type name(type x, type y, type z) {                                                         \
        type result;                                                                                         \
        asm volatile(instruction " %0, %1, %2, %3;"                                                          \
                     : "=" registers(result)                                                                 \
                     : registers(x), registers(y), registers(z));                                            \
        return result;                                                                                       \
    }

VEXIL_BINARY(add, int, "r", "add.s32")
VEXIL_BINARY(subtract, int, "r", "sub.s32")
VEXIL_BINARY(multiplyLow, int, "r", "mul.lo.s32")
VEXIL_BINARY(divide, int, "r", "div.s32")
VEXIL_UNARY(absolute, int, "r", "abs.s32")
VEXIL_UNARY(negate, int, "r", "neg.s32")
VEXIL_BINARY(smaller, int, "r", "min.s32")
VEXIL_BINARY(larger, int, "r", "max.s32")
VEXIL_TERNARY(multiplyAdd, int, "r", "mad.lo.s32")
VEXIL_BINARY(addWithCarryOut, int, "r", "add.cc.s32")
VEXIL_BINARY(subtractWithBorrowOut, int, "r", "sub.cc.s32")
VEXIL_BINARY(remainder, int, "r", "rem.s32")
VEXIL_TERNARY(sumOfAbsoluteDifference, int, "r", "sad.s32")

VEXIL_BINARY(add, float, "f", "add.rn.f32")
VEXIL_BINARY(subtract, float, "f", "sub.rn.f32")
VEXIL_BINARY(multiply, float, "f", "mul.rn.f32")
VEXIL_BINARY(divide, float, "f", "div.rn.f32")
VEXIL_UNARY(absolute, float, "f", "abs.f32")
VEXIL_UNARY(negate, float, "f", "neg.f32")
VEXIL_BINARY(smaller, float, "f", "min.f32")
VEXIL_BINARY(larger, float, "f", "max.f32")
VEXIL_TERNARY(fusedMultiplyAdd, float, "f", "fma.rn.f32")
VEXIL_TERNARY(multiplyAdd, float, "f", "mad.rn.f32")
VEXIL_UNARY(exp2Approximate, float, "f", "ex2.approx.f32")
VEXIL_UNARY(reciprocal, float, "f", "rcp.rn.f32")
VEXIL_UNARY(squareRoot, float, "f", "sqrt.rn.f32")
VEXIL_UNARY(reciprocalRootApproximate, float, "f", "rsqrt.approx.f32")
VEXIL_UNARY(log2Approximate, float, "f", "lg2.approx.f32")
VEXIL_UNARY(sineApproximate, float, "f", "sin.approx.f32")
VEXIL_UNARY(cosineApproximate, float, "f", "cos.approx.f32")

#undef VEXIL_UNARY
#undef VEXIL_BINARY
#undef VEXIL_TERNARY

#else

// Sums and products wrap on the card, which on the host only unsigned arithmetic does.
VEXIL_INLINE Word bits(int x) { return static_cast<Word>(x); }

VEXIL_INLINE int add(int x, int y) { return static_cast<int>(bits(x) + bits(y)); }
VEXIL_INLINE int subtract(int x, int y) { return static_cast<int>(bits(x) - bits(y)); }
VEXIL_INLINE int multiplyLow(int x, int y) { return static_cast<int>(bits(x) * bits(y)); }
VEXIL_INLINE int divide(int x, int y) {
    return y != 0 ? static_cast<int>(static_cast<long long>(x) / y) : -1;
}
VEXIL_INLINE int negate(int x) { return static_cast<int>(0 - bits(x)); }
VEXIL_INLINE int absolute(int x) { return x < 0 ? negate(x) : x; }
VEXIL_INLINE int smaller(int x, int y) { return x < y ? x : y; }
VEXIL_INLINE int larger(int x, int y) { return x > y ? x : y; }
VEXIL_INLINE int multiplyAdd(int x, int y, int z) { return add(multiplyLow(x, y), z); }
VEXIL_INLINE int addWithCarryOut(int x, int y) { return add(x, y); }
VEXIL_INLINE int subtractWithBorrowOut(int x, int y) { return subtract(x, y); }
VEXIL_INLINE int remainder(int x, int y) {
    return y != 0 ? static_cast<int>(static_cast<long long>(x) % y) : x;
}
VEXIL_INLINE int sumOfAbsoluteDifference(int x, int y, int z) {
    return add(z, x < y ? subtract(y, x) : subtract(x, y));
}

VEXIL_INLINE float add(float x, float y) { return x + y; }
VEXIL_INLINE float subtract(float x, float y) { return x - y; }
VEXIL_INLINE float multiply(float x, float y) { return x * y; }
VEXIL_INLINE float divide(float x, float y) { return x / y; }
VEXIL_INLINE float absolute(float x) { return __builtin_fabsf(x); }
VEXIL_INLINE float negate(float x) { return -x; }
VEXIL_INLINE float smaller(float x, float y) { return __builtin_fminf(x, y); }
VEXIL_INLINE float larger(float x, float y) { return __builtin_fmaxf(x, y); }
// MinGW's fmaf rounds the product, so it is not used. In double precision the product is exact; the sum is
// rounded to odd, with which the rounding to float gives what one rounding of the whole would.
VEXIL_INLINE float fusedMultiplyAdd(float x, float y, float z) {
    const double product = static_cast<double>(x) * static_cast<double>(y);
    const double sum = product + static_cast<double>(z);
    const double taken = sum - product;
    const double lost = (product - (sum - taken)) + (static_cast<double>(z) - taken);
    const auto pattern = __builtin_bit_cast(LongWord, sum);
    // False as well where an operand is infinite or no number.
    if ((lost > 0 || lost < 0) && pattern % 2 == 0) {
        return static_cast<float>(
            __builtin_bit_cast(double, (lost > 0) == (sum > 0) ? pattern + 1 : pattern - 1));
    }
    return static_cast<float>(sum);
}
VEXIL_INLINE float multiplyAdd(float x, float y, float z) { return fusedMultiplyAdd(x, y, z); }
VEXIL_INLINE float reciprocal(float x) { return 1.0f / x; }
VEXIL_INLINE float squareRoot(float x) { return __builtin_sqrtf(x); }
// The card approximates these; the host takes the value in double precision, rounded once.
VEXIL_INLINE float exp2Approximate(float x) { return static_cast<float>(__builtin_exp2(x)); }
VEXIL_INLINE float reciprocalRootApproximate(float x) {
    return static_cast<float>(1.0 / __builtin_sqrt(static_cast<double>(x)));
}
VEXIL_INLINE float log2Approximate(float x) { return static_cast<float>(__builtin_log2(x)); }
VEXIL_INLINE float sineApproximate(float x) { return static_cast<float>(__builtin_sin(x)); }
VEXIL_INLINE float cosineApproximate(float x) { return static_cast<float>(__builtin_cos(x)); }

#endif

VEXIL_KERNELS_END
