#pragma once

#include "core/test_run_arguments.h"

namespace vexil::module::video_card {

/// The two manners in which the Direct3D tests end a run early; hosts see the difference.
enum class Dx11StopManner {
    reportFirst,   ///< the report, then progress 100; a user's cancel sets no progress
    progressFirst, ///< progress 100, then the report; a user's cancel sets progress 100 too
};

/// Whether the test must end with `TestResult::NotCompleted`. A system event that spoils the outcome is
/// looked at first and reported. A user's cancel sends no message.
[[nodiscard]] bool dx11StopCheck(const core::TestRunArguments& arguments,
                                 Dx11StopManner manner = Dx11StopManner::reportFirst);

} // namespace vexil::module::video_card
