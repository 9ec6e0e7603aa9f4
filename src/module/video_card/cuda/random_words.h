#pragma once

#include <cstdint>
#include <random>

namespace vexil::module::video_card {

/// The words of the pattern tests: the low halves of a 64-bit Mersenne Twister's outputs. The seed is fixed,
/// so that two runs write identical data.
class RandomWords {
public:
    [[nodiscard]] std::uint32_t next() { return static_cast<std::uint32_t>(source_()); }

private:
    std::mt19937_64 source_{43};
};

} // namespace vexil::module::video_card
