#include "module/video_card/direct3d/dx11_stop_check.h"

#include "core/message_keys.h"

namespace vexil::module::video_card {

bool dx11StopCheck(const core::TestRunArguments& arguments, Dx11StopManner manner) {
    auto& reporter = *arguments.reporter;
    const bool progressFirst = manner == Dx11StopManner::progressFirst;
    if (arguments.systemEvents && (arguments.systemEvents->read() & core::compromisingSystemEvents) != 0) {
        if (progressFirst) {
            reporter.setProgress(100);
        }
        reporter.report({0, keys::abortedBySystemEvent});
        if (!progressFirst) {
            reporter.setProgress(100);
        }
        return true;
    }
    if (*arguments.cancelRequested == 0) {
        return false;
    }
    if (progressFirst) {
        reporter.setProgress(100);
    }
    return true;
}

} // namespace vexil::module::video_card
