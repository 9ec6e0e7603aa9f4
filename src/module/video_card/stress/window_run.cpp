#include "module/video_card/stress/window_run.h"

#include "core/test_reporter.h"
#include "module/video_card/stress/rendering/d3d11_renderer.h"
#include "module/video_card/stress/stress_codes.h"
#include "module/video_card/stress/stress_stop_check.h"
#include "module/video_card/stress/take_sample.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace vexil::module::video_card {

namespace {

/// Toward zero, and what the processor gives for a number that does not fit: a run of no duration has one.
std::int32_t truncate(double number) {
    constexpr std::int32_t noInteger = std::numeric_limits<std::int32_t>::min();
    return std::abs(number) < 2147483648.0 ? static_cast<std::int32_t>(number) : noInteger;
}

} // namespace

WindowRun::WindowRun(const StressRun& run, const LoadController& loadController, WindowScene& scene,
                     Window window)
    : run_(run), loadController_(loadController), scene_(scene), window_(std::move(window)) {}

float WindowRun::elapsedSeconds() const {
    return static_cast<float>(window_.elapsedMilliseconds()) / 1000.0F;
}

void WindowRun::onRenderTick() {
    const float seconds = elapsedSeconds();
    // A restart of the clock leaves the last second as it is, so load and temperature pause until the clock
    // has caught up: required as it stands.
    if (std::floor(seconds) >= static_cast<float>(lastWholeSecond_ + 1)) {
        lastWholeSecond_ = static_cast<std::uint64_t>(seconds);
        if (loadController_.tick(*run_.services.timer) && loadController_.burnInActive) {
            sendTemperature();
        }
    }
    const auto percent = truncate(seconds * 100.0 / static_cast<float>(run_.durationSeconds));
    if (percent != lastPercent_) {
        lastPercent_ = percent;
        run_.arguments.reporter->setProgress(static_cast<std::uint8_t>(percent));
    }
    scene_.render(seconds);
}

void WindowRun::sendTemperature() {
    std::int64_t celsius = 0;
    if (run_.device.getTemperature(celsius)) {
        run_.arguments.reporter->report(
            {0, "[VIDEO_CARD_BURN_IN_TEMPERATURE](" + std::to_string(celsius) + ")"});
    }
}

void WindowRun::onSampleTick() {
    if (hasSpoilingEvent(run_.arguments)) {
        // The message follows when the window has ended.
        window_.done(StressCode::TimeIsUp);
    }
    const auto sample = takeSample(&scene_.renderer(), &run_.device);
    run_.statistics.addSample(sample);
    scene_.updateOverlay(sample);
    if (static_cast<float>(run_.durationSeconds) > elapsedSeconds()) {
        return;
    }
    int result = StressCode::TimeIsUp;
    if (picturesDiffer()) {
        result = StressCode::Differed;
        window_.done(result);
    }
    if (loadController_.deadline.infinite) {
        window_.restartClock();
    } else {
        window_.done(result);
    }
}

/// Only the frame at a period's end is looked at; a difference that came and went before is not found.
bool WindowRun::picturesDiffer() {
    ImageReadBack image;
    if (!scene_.renderer().readBack(image)) {
        return false;
    }
    const auto* words = static_cast<const std::uint32_t*>(image.data->pData);
    const auto count = std::uint64_t{image.width} * image.height;
    return std::any_of(words, words + count, [](std::uint32_t word) { return word != 0; });
}

} // namespace vexil::module::video_card
