#pragma once

#include "core/test_run_arguments.h"

#include <cstdint>

namespace vexil::module::video_card {

/// Whether an event of the system has spoilt the run's outcome. False where the host keeps no events.
[[nodiscard]] bool hasSpoilingEvent(const core::TestRunArguments& arguments);

/// `TestResult::Passed` to go on, `NotCompleted` to stop. A system event is looked at first and reported; a
/// user's cancel sends nothing.
[[nodiscard]] std::uint8_t stressStopCheck(const core::TestRunArguments& arguments);

} // namespace vexil::module::video_card
