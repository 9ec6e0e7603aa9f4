#pragma once

#include "module/video_card/stress/rendering/stress_sample.h"
#include "platform/overlay_painter.h"

#include <string>

// What stands over the picture, and how large.
namespace vexil::module::video_card {

struct OverlayLabels {
    std::wstring fps;
    std::wstring usage;
    std::wstring temperature;
};

/// A line for each valid value of the sample, in this order, each with a line end.
[[nodiscard]] std::wstring statisticsText(const OverlayLabels& labels, const StressSample& sample);

/// Sizes of the line that tells how to leave the full screen: in points for measuring it, in pixels for
/// drawing it.
struct InstructionSizes {
    int pointSize;
    float pixelSize;
};

[[nodiscard]] InstructionSizes instructionSizes(int dpi);

/// `scale` times two ninths of a pixel.
[[nodiscard]] platform::OverlayFont statisticsFont(float scale);
[[nodiscard]] platform::OverlayFont instructionFont(float pixelSize);

inline constexpr float statisticsPlace = 1; ///< in pixels from the left and from the top
inline constexpr platform::OverlayColor instructionColor{0.6313F, 0.6313F, 0.6313F, 1.0F};

} // namespace vexil::module::video_card
