#include "module/video_card/direct3d/texture_pipeline/pattern_image.h"

#include "utils/mersenne_twister.h"

namespace vexil::module::video_card {

void fillPattern(std::uint32_t seed, PatternImage& image) {
    image.reserve(patternPixels);
    image.resize(patternPixels);
    utils::MersenneTwister(seed).fill(image);
}

} // namespace vexil::module::video_card
