#include "module/video_card/stress/wireframe_path.h"

#include "core/message_keys.h"
#include "core/sal.h"
#include "core/test_result.h"
#include "module/video_card/stress/stress_status.h"
#include "module/video_card/stress/stress_stop_check.h"
#include "module/video_card/stress/take_sample.h"
#include "module/video_card/stress/wireframe_stress_test_wrapper.h"
#include "utils/interaction/legacy_context.h"
#include "utils/interaction/request_input.h"

#include <functional>
#include <memory>

namespace vexil::module::video_card {

using core::TestResult;

namespace {

constexpr double sliceSeconds = 1.0;
constexpr double sampleSeconds = 2.0;

/// Each picture is drawn twice, so that the second one has its equal to be compared with on the card.
bool renderPair(WireframeScene& scene) {
    scene.advanceTime();
    return scene.renderFrame() && scene.renderFrame();
}

std::uint8_t renderSlice(WireframeScene& scene, SystemTimer& timer) {
    const auto start = timer.now();
    std::uint8_t status = TestResult::Passed;
    while (status == TestResult::Passed && timer.secondsBetween(start, timer.now()) < sliceSeconds) {
        status = renderPair(scene) ? TestResult::Passed : operationFailed;
    }
    return status;
}

/// Hands one slice to the GUI thread and returns when it has run there.
void runOnGui(std::function<void()>& slice, const core::TestRunArguments& arguments) {
    WireframeStressTestWrapper wrapper(slice);
    utils::legacy::Context context(&arguments);
    InputRequest request;
    request.widget = &wrapper;
    request.type = 3;
    request.context = &context;
    utils::requestInput(request, *arguments.reporter);
}

} // namespace

std::uint8_t runWireframe(const StressRun& run) {
    auto& timer = *run.services.timer;
    auto& reporter = *run.arguments.reporter;
    if (!run.lock.slot() || !run.arguments.systemEvents) {
        return TestResult::NotSupported;
    }
    const auto scene = run.services.createWireframeScene(*run.lock.slot());
    if (!scene) {
        reporter.setProgress(100);
        reporter.report({0, keys::couldNotExecuteOperation});
        return TestResult::NotCompleted;
    }
    const auto start = timer.now();
    const auto elapsed = [&] { return timer.secondsBetween(start, timer.now()); };
    const auto duration = static_cast<double>(run.durationSeconds);
    auto lastSample = start;
    std::uint8_t sliceStatus = TestResult::Passed;
    std::function<void()> slice = [&] {
        const auto status = renderSlice(*scene, timer);
        sliceStatus = status;
    };
    while (duration > elapsed()) {
        runOnGui(slice, run.arguments);
        if (sliceStatus != TestResult::Passed) {
            return sliceStatus;
        }
        const auto now = timer.now();
        if (timer.secondsBetween(lastSample, now) > sampleSeconds) {
            run.statistics.addSample(takeSample(&scene->renderer(), &run.device));
            lastSample = now;
        }
        // Behind 100 percent when the last slice ends late: the host shows what it can.
        const auto percent = static_cast<std::int64_t>(elapsed() / duration * 100.0);
        reporter.setProgress(static_cast<std::uint8_t>(percent));
        if (const auto stop = stressStopCheck(run.arguments); stop != TestResult::Passed) {
            return stop;
        }
    }
    return sliceStatus;
}

} // namespace vexil::module::video_card
