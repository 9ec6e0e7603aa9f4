#include "module/video_card/stress/stress_stop_check.h"

#include "core/message_keys.h"
#include "core/test_result.h"

namespace vexil::module::video_card {

using core::TestResult;

bool hasSpoilingEvent(const core::TestRunArguments& arguments) {
    return arguments.systemEvents && (arguments.systemEvents->read() & core::compromisingSystemEvents) != 0;
}

std::uint8_t stressStopCheck(const core::TestRunArguments& arguments) {
    if (hasSpoilingEvent(arguments)) {
        arguments.reporter->report({0, keys::abortedBySystemEvent});
        arguments.reporter->setProgress(100);
        return TestResult::NotCompleted;
    }
    return *arguments.cancelRequested != 0 ? TestResult::NotCompleted : TestResult::Passed;
}

} // namespace vexil::module::video_card
