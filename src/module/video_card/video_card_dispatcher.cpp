#include "module/video_card/video_card_dispatcher.h"

#include "core/test.h"

namespace vexil::module::video_card {

namespace {

/// The visible stress test, and the wireframe one.
bool isStress(const core::TestExecution& execution) {
    const auto id = execution.test->id();
    return id == 5 || id == 21;
}

} // namespace

bool VideoCardDispatcher::canStart(const std::shared_ptr<const core::TestExecution>& execution) const {
    if (isStress(*execution) && stressRunning_) {
        return false;
    }
    return GeneralDiagnosticDispatcher::canStart(execution);
}

void VideoCardDispatcher::finished(const std::shared_ptr<const core::TestExecution>& execution) {
    if (isStress(*execution)) {
        stressRunning_ = false;
    }
    GeneralDiagnosticDispatcher::finished(execution);
}

void VideoCardDispatcher::started(const std::shared_ptr<const core::TestExecution>& execution) {
    if (isStress(*execution)) {
        stressRunning_ = true;
    }
    GeneralDiagnosticDispatcher::started(execution);
}

} // namespace vexil::module::video_card
