#pragma once

#include "platform/overlay_painter.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vexil::platform {

/// How far a text covers each pixel, 0 to 255, row by row without gaps.
struct TextImage {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint8_t> coverage;
};

/// Paints the text with its top left corner in that of the image, which is as large as the text and no larger
/// than the maximum. Needs a QGuiApplication, for its fonts.
[[nodiscard]] TextImage paintText(const std::wstring& text, const OverlayFont& font, float maximumWidth,
                                  float maximumHeight);

/// Whether there is a QGuiApplication.
[[nodiscard]] bool canPaintText();

} // namespace vexil::platform
