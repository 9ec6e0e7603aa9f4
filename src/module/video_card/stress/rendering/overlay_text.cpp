#include "module/video_card/stress/rendering/overlay_text.h"

#include <iomanip>
#include <locale>
#include <sstream>

namespace vexil::module::video_card {

namespace {

constexpr const wchar_t* fontFamily = L"Lato";
constexpr int black = 900;
constexpr int semiBold = 600;
constexpr int normalStretch = 5;
constexpr int semiCondensed = 4;
constexpr float statisticsProportion = 0.22222222F;

} // namespace

std::wstring statisticsText(const OverlayLabels& labels, const StressSample& sample) {
    std::wostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(0);
    if (sample.fpsValid) {
        text << labels.fps << L": " << sample.fps << L'\n';
    }
    if (sample.usageValid) {
        text << labels.usage << L": " << sample.usage << L"%\n";
    }
    if (sample.temperatureValid) {
        text << labels.temperature << L": ";
        if (sample.temperature < 1) {
            text << L"--";
        } else {
            text << sample.temperature;
        }
        text << L"\u00B0C\n";
    }
    return text.str();
}

InstructionSizes instructionSizes(int dpi) {
    const float base = static_cast<float>(dpi) * 15.0F;
    const float step = static_cast<float>(dpi - 96) / 24.0F * 24.0F;
    return {static_cast<int>(base / (step + 100.0F)), base / (step + 72.0F)};
}

platform::OverlayFont statisticsFont(float scale) {
    return {fontFamily, black, normalStretch, scale * statisticsProportion};
}

platform::OverlayFont instructionFont(float pixelSize) {
    return {fontFamily, semiBold, semiCondensed, pixelSize};
}

} // namespace vexil::module::video_card
