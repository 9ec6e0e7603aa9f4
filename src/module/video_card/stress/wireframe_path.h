#pragma once

#include "module/video_card/stress/stress_run.h"

#include <cstdint>

namespace vexil::module::video_card {

/// Renders the wireframe for the run's time, in slices of one second on the GUI thread. The verdict is the
/// card's health: a frame fails if the card is gone or a target cannot be bound, and no picture is looked at.
/// Returns a `TestResult` or `operationFailed`.
[[nodiscard]] std::uint8_t runWireframe(const StressRun& run);

} // namespace vexil::module::video_card
