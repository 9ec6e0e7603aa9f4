#include "utils/mersenne_twister_block.h"

#include <algorithm>

// One text of the loops, compiled once for each kind of processor: the compiler vectorises them by itself.
// The choice is made here and not by the loader (function clones), which MinGW's loader cannot do.
namespace vexil::utils {

namespace {

constexpr std::size_t words = mersenneTwisterWords;
constexpr std::size_t middle = 397;

[[gnu::always_inline]] inline std::uint32_t nextWord(std::uint32_t high, std::uint32_t low,
                                                     std::uint32_t across) {
    const std::uint32_t mixed = (high & 0x80000000U) | (low & 0x7FFFFFFFU);
    return across ^ (mixed >> 1) ^ ((0U - (low & 1U)) & 0x9908B0DFU);
}

[[gnu::always_inline]] inline void twistLoop(MersenneTwisterState& state) {
    std::uint32_t* const word = state.data();
    for (std::size_t i = 0; i < words - middle; ++i) {
        word[i] = nextWord(word[i], word[i + 1], word[i + middle]);
    }
    for (std::size_t i = words - middle; i < words - 1; ++i) {
        word[i] = nextWord(word[i], word[i + 1], word[i - (words - middle)]);
    }
    word[words - 1] = nextWord(word[words - 1], word[0], word[middle - 1]);
}

template <typename T>
[[gnu::always_inline]] inline void temperLoop(const std::uint32_t* __restrict state, std::size_t count,
                                              T* __restrict out) {
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = static_cast<T>(temperMersenneTwisterWord(state[i]));
    }
}

// A row of the table needs functions of its own, since the target belongs to the function.
#define VEXIL_MERSENNE_TWISTER_CODE(level, ...)                                                              \
    __VA_ARGS__ void twist_##level(MersenneTwisterState& state) { twistLoop(state); }                        \
    __VA_ARGS__ void temper_##level(const std::uint32_t* state, std::size_t count, std::uint32_t* out) {     \
        temperLoop(state, count, out);                                                                       \
    }                                                                                                        \
    __VA_ARGS__ void temperLowBytes_##level(const std::uint32_t* state, std::size_t count,                   \
                                            std::uint8_t* out) {                                             \
        temperLoop(state, count, out);                                                                       \
    }

VEXIL_MERSENNE_TWISTER_CODE(avx512, [[gnu::target("avx512f,avx512bw,avx512vl,prefer-vector-width=512")]])
VEXIL_MERSENNE_TWISTER_CODE(avx2, [[gnu::target("avx2")]])
VEXIL_MERSENNE_TWISTER_CODE(baseline, )
#undef VEXIL_MERSENNE_TWISTER_CODE

bool hasAvx512() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512vl");
}

bool hasAvx2() { return __builtin_cpu_supports("avx2") != 0; }

constexpr std::array codes = {
    MersenneTwisterCode{"avx512", hasAvx512, twist_avx512, temper_avx512, temperLowBytes_avx512},
    MersenneTwisterCode{"avx2", hasAvx2, twist_avx2, temper_avx2, temperLowBytes_avx2},
    MersenneTwisterCode{"baseline", [] { return true; }, twist_baseline, temper_baseline,
                        temperLowBytes_baseline},
};

} // namespace

std::span<const MersenneTwisterCode> mersenneTwisterCodes() { return codes; }

const MersenneTwisterCode& bestMersenneTwisterCode() {
    static const MersenneTwisterCode& best =
        *std::ranges::find_if(codes, [](const auto& code) { return code.isSupported(); });
    return best;
}

} // namespace vexil::utils
