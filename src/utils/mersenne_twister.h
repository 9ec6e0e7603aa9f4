#pragma once

#include "utils/mersenne_twister_block.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace vexil::utils {

/// The sequence of `std::mt19937`, made a block of 624 words at a time with the widest vectors that the
/// processor has. Every test that fills memory with random content draws from it; where the bytes of a whole
/// image are wanted, it is more than ten times as fast as drawing them one by one from the standard engine.
class MersenneTwister {
public:
    using result_type = std::uint32_t;

    static constexpr result_type defaultSeed = 5489; ///< as `std::mt19937::default_seed`

    explicit MersenneTwister(result_type value = defaultSeed)
        : MersenneTwister(value, bestMersenneTwisterCode()) {}
    /// With the given one of `mersenneTwisterCodes()`; all of them give the same sequence.
    MersenneTwister(result_type value, const MersenneTwisterCode& code) : code_(&code) { seed(value); }

    static constexpr result_type min() { return 0; }
    static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }

    /// Starts the sequence of `value` anew.
    void seed(result_type value = defaultSeed);
    result_type operator()();
    void discard(unsigned long long draws);

    /// One draw for each word, in order.
    void fill(std::span<std::uint32_t> words);
    /// One draw for each byte, of which the low 8 bits are taken.
    void fillLowBytes(std::span<std::uint8_t> bytes);

private:
    /// The words of the current block that are not drawn yet; never empty.
    [[nodiscard]] std::span<const std::uint32_t> rest();

    const MersenneTwisterCode* code_;
    MersenneTwisterState state_;
    std::size_t drawn_ = 0; ///< of the current block
};

} // namespace vexil::utils
