#pragma once

#include "core/test_reporter.h"
#include "utils/interaction/input_request.h"

namespace vexil::utils {

/// Asks the user through the host, and returns when there is an answer: in `request.result`, 0 where nobody
/// answered. On a thread of a test.
void requestInput(InputRequest& request, core::TestReporter& reporter);

} // namespace vexil::utils
