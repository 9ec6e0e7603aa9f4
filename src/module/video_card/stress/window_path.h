#pragma once

#include "module/video_card/stress/load_controller.h"
#include "module/video_card/stress/stress_run.h"

#include <cstdint>

namespace vexil::module::video_card {

class TestParameterScreenDimensions;

/// Shows the animation in a window for the run's time, on the GUI thread, and waits for its end. Returns a
/// `TestResult` or `operationFailed`.
[[nodiscard]] std::uint8_t runInWindow(const StressRun& run, const LoadController& loadController,
                                       const TestParameterScreenDimensions& dimensions);

/// What the test ends with where its window ended with this code.
[[nodiscard]] std::uint8_t statusOfWindow(std::uint32_t code);

} // namespace vexil::module::video_card
