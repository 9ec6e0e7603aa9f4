#pragma once

#include "module/video_card/direct3d/texture_pipeline/pattern_image.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace vexil::module::video_card {

using PatternPixels = std::span<const std::uint32_t, patternPixels>;

/// Where the pixel `k` of a pattern is in the transposed picture.
[[nodiscard]] constexpr std::size_t transposedIndex(std::size_t k) {
    return k % patternExtent * patternExtent + k / patternExtent;
}

/// The comparison of a pattern with its transposed picture, compiled for one kind of processor.
struct TranspositionCode {
    const char* name;
    bool (*isSupported)();
    bool (*isTransposed)(const std::uint32_t* pattern, const std::uint32_t* picture);
};

/// Every version there is, the best first. The last one runs on any x86-64 processor.
[[nodiscard]] std::span<const TranspositionCode> transpositionCodes();

/// Whether every pixel is where it belongs. With AVX2 it costs less than twice a `memcmp` of the images.
[[nodiscard]] bool isTransposed(PatternPixels pattern, PatternPixels picture);

/// The first index of the pattern whose pixel is wrong in the picture.
[[nodiscard]] std::optional<std::size_t> firstTranspositionError(PatternPixels pattern,
                                                                 PatternPixels picture);

} // namespace vexil::module::video_card
