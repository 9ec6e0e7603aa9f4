#include "module/video_card/direct3d/texture_pipeline/transposition.h"

#include <algorithm>

namespace vexil::module::video_card {

namespace {

const TranspositionCode& bestCode() {
    static const TranspositionCode& best =
        *std::ranges::find_if(transpositionCodes(), [](const auto& code) { return code.isSupported(); });
    return best;
}

} // namespace

bool isTransposed(PatternPixels pattern, PatternPixels picture) {
    return bestCode().isTransposed(pattern.data(), picture.data());
}

std::optional<std::size_t> firstTranspositionError(PatternPixels pattern, PatternPixels picture) {
    // The walk in the order of the pattern jumps a row of the picture at each step, so it waits until there
    // is something to find.
    if (isTransposed(pattern, picture)) {
        return std::nullopt;
    }
    std::size_t k = 0;
    while (pattern[k] == picture[transposedIndex(k)]) {
        ++k;
    }
    return k;
}

} // namespace vexil::module::video_card
