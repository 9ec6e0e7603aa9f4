#include "timing.h"
#include "utils/mersenne_twister.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

// The image of one surface, 4 Mi draws of which the low bytes are kept, from the standard library's engine
// and from ours in each version that this processor can run.
int main() {
    using namespace vexil;
    constexpr int rounds = 21;
    std::vector<std::uint8_t> image(std::size_t{1} << 22);

    std::mt19937 standard(123);
    const double expected = benchmarks::medianTime(
        rounds, [&] { std::ranges::generate(image, [&] { return static_cast<std::uint8_t>(standard()); }); });
    std::printf("%-16s %8.2f ms\n", "std::mt19937", expected);
    for (const auto& code : utils::mersenneTwisterCodes()) {
        if (!code.isSupported()) {
            std::printf("%-16s not on this processor\n", code.name);
            continue;
        }
        utils::MersenneTwister engine(123, code);
        const double time = benchmarks::medianTime(rounds, [&] { engine.fillLowBytes(image); });
        std::printf("%-16s %8.2f ms, %5.1f times as fast\n", code.name, time, expected / time);
    }
}
