#pragma once

#include <string>

// What the overlay asks of Qt: the translated instruction for leaving the full screen, and its width.
namespace vexil::module::video_card {

[[nodiscard]] std::wstring instructionText();

/// In pixels, on one line, in the instruction's font of `pointSize` points.
[[nodiscard]] float instructionWidth(const std::wstring& text, int pointSize);

} // namespace vexil::module::video_card
