#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace vexil::utils {

/// Words of the engine's state, and of one block of its output: the `n` of Matsumoto and Nishimura's MT19937.
inline constexpr std::size_t mersenneTwisterWords = 624;

using MersenneTwisterState = std::array<std::uint32_t, mersenneTwisterWords>;

/// The inner loops of the engine, compiled for one kind of processor.
struct MersenneTwisterCode {
    const char* name;
    bool (*isSupported)();
    /// Replaces the state by the next one.
    void (*twist)(MersenneTwisterState& state);
    /// The outputs that belong to `count` words of the state.
    void (*temper)(const std::uint32_t* state, std::size_t count, std::uint32_t* words);
    /// The low 8 bits of these outputs.
    void (*temperLowBytes)(const std::uint32_t* state, std::size_t count, std::uint8_t* bytes);
};

/// Every version there is, the best first. The last one runs on any x86-64 processor.
[[nodiscard]] std::span<const MersenneTwisterCode> mersenneTwisterCodes();

/// The first that this processor can run; found once.
[[nodiscard]] const MersenneTwisterCode& bestMersenneTwisterCode();

/// The output that belongs to one word of the state.
[[nodiscard]] constexpr std::uint32_t temperMersenneTwisterWord(std::uint32_t word) {
    word ^= word >> 11;
    word ^= (word << 7) & 0x9D2C5680U;
    word ^= (word << 15) & 0xEFC60000U;
    return word ^ (word >> 18);
}

} // namespace vexil::utils
