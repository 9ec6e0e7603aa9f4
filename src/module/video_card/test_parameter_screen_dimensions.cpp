#include "module/video_card/test_parameter_screen_dimensions.h"

#include <algorithm>
#include <array>
#include <regex>
#include <string_view>

namespace vexil::module::video_card {

namespace {

struct Size {
    std::int32_t width;
    std::int32_t height;
};

/// What the range names, smallest first.
constexpr std::array<Size, 5> offeredSizes = {{
    {400, 400},
    {1024, 768},
    {1280, 1024},
    {1920, 1080},
    {3840, 2160},
}};

struct Choice {
    std::string_view text;
    Size size;
    bool fullScreen = false;
};

constexpr std::array<Choice, 6> choices = {{
    {"400X400", {400, 400}}, // the capital is required
    {"1024x768", {1024, 768}},
    {"1280x1024", {1280, 1024}},
    {"1920x1080", {1920, 1080}},
    {"3840x2160", {3840, 2160}},
    {"FULL_SCREEN", {0, 0}, true},
}};

const std::regex validText("^(?:400x400|1024x768|1280x1024|1920x1080|3840x2160|FULL_SCREEN)$",
                           std::regex::ECMAScript);

std::string rangeOf(const platform::DesktopRectangle& desktop) {
    std::string range = "[";
    for (const auto& [width, height] : offeredSizes) {
        if (width <= desktop.right && height <= desktop.bottom) {
            range += std::to_string(width) + "x" + std::to_string(height) + "|";
        }
    }
    return range + "FULL_SCREEN]";
}

} // namespace

TestParameterScreenDimensions::TestParameterScreenDimensions()
    : TestParameterScreenDimensions(platform::desktopRectangle()) {}

TestParameterScreenDimensions::TestParameterScreenDimensions(const platform::DesktopRectangle& desktop)
    : TestParameter({"WINDOW_SIZE", "WINDOW_SCREEN_SIZE", "WINDOW_SIZE_DESCRIPTION", "400x400", 3, 0,
                     rangeOf(desktop)}) {}

bool TestParameterScreenDimensions::isValid(std::string text) const {
    return std::regex_match(text, validText);
}

void TestParameterScreenDimensions::setValue(std::string text) {
    fullScreen_ = false;
    const auto choice = std::ranges::find(choices, text, &Choice::text);
    if (choice == choices.end()) {
        return;
    }
    width_ = choice->size.width;
    height_ = choice->size.height;
    fullScreen_ = choice->fullScreen;
}

} // namespace vexil::module::video_card
