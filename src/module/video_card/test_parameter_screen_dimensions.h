#pragma once

#include "core/test_parameter.h"
#include "platform/desktop_rectangle.h"

#include <cstdint>

namespace vexil::module::video_card {

/// "WINDOW_SIZE": the size of the window that a test draws in, as "1024x768" or "FULL_SCREEN". Its range
/// names the sizes that fit the desktop; what is valid does not depend on the desktop.
class TestParameterScreenDimensions : public core::TestParameter {
public:
    /// For the desktop as it is now.
    TestParameterScreenDimensions();
    explicit TestParameterScreenDimensions(const platform::DesktopRectangle& desktop);

    [[nodiscard]] bool isValid(std::string text) const override;
    /// Takes width and height from one of the sizes, without asking `isValid` and without keeping the text;
    /// any other text leaves both as they are. 400 by 400 is compared with a capital X, so the valid text
    /// "400x400" is such another text: hosts rely on it.
    void setValue(std::string text) override;

    /// In pixels; 0 by 0 for the full screen.
    [[nodiscard]] std::int32_t width() const { return width_; }
    [[nodiscard]] std::int32_t height() const { return height_; }
    [[nodiscard]] bool isFullScreen() const { return fullScreen_; }

private:
    std::int32_t width_ = 400;
    std::int32_t height_ = 400;
    bool fullScreen_ = false;
};

} // namespace vexil::module::video_card
