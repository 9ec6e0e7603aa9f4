#include "module/video_card/stress/d3d11_stress_test.h"

#include "core/message_keys.h"
#include "core/sal.h"
#include "core/test_result.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/device.h"
#include "module/video_card/direct3d/direct3d_offer.h"
#include "module/video_card/direct3d/dx11_reset_guard.h"
#include "module/video_card/stress/stress_statistics.h"
#include "module/video_card/stress/stress_status.h"
#include "module/video_card/stress/stress_stop_check.h"
#include "module/video_card/stress/window_path.h"
#include "module/video_card/stress/wireframe_path.h"

#include <exception>
#include <utility>

namespace vexil::module::video_card {

using core::TestResult;

namespace {

std::int32_t idOf(bool wireframe) { return std::int32_t{wireframe} << 4 | 5; }

/// What the host is told in the end, whatever the path said. The later line wins.
std::uint8_t conclude(std::uint8_t status, const core::TestRunArguments& arguments) {
    auto& reporter = *arguments.reporter;
    const auto endWith = [&](const std::string& key) {
        reporter.setProgress(100);
        reporter.report({0, key});
        status = TestResult::NotCompleted;
    };
    if (status == operationFailed) {
        endWith(keys::couldNotExecuteOperation);
    }
    if (hasSpoilingEvent(arguments)) {
        endWith(keys::abortedBySystemEvent);
    }
    if (*arguments.cancelRequested != 0) {
        status = TestResult::NotCompleted;
    }
    return status;
}

} // namespace

D3D11StressTest::D3D11StressTest(bool wireframe, StressServices services)
    : D3D11StressTestBase(catalogueDescriptor(idOf(wireframe))), wireframe_(wireframe),
      services_(std::move(services)) {
    if (!wireframe_) {
        addParameter(&burnIn_);
        addParameter(&infinite_);
        addParameter(&load_);
        addParameter(&screenDimensions_);
    }
}

bool D3D11StressTest::isSupported(core::Device* device, std::shared_ptr<core::Device>) const {
    return hasHardwareDirect3D(device);
}

void D3D11StressTest::prepareBurnIn() {
    // Never cleared: a later run of this object is still told as a burn-in. Hosts make a test for each run.
    loadController_.burnInActive = true;
    loadController_.loadFraction = load_.percent() / 100.0;
    loadController_.deadline.infinite = infinite_.enabled();
    if (!loadController_.deadline.infinite) {
        loadController_.deadline.seconds = durationSeconds();
        loadController_.deadline.startTick = services_.timer->now();
    }
}

std::uint8_t D3D11StressTest::execute(const core::TestRunArguments& arguments) {
    if (const auto stop = stressStopCheck(arguments); stop != TestResult::Passed) {
        return stop;
    }
    const auto device = std::dynamic_pointer_cast<Device>(arguments.device.lock());
    if (!device) {
        return TestResult::DeviceUnavailable;
    }
    const auto lock = device->lock();
    if (!lock.slot()) {
        return TestResult::NotSupported;
    }
    const Dx11ResetGuard reset(lock);
    const auto direct3d = lock.slot()->device;
    // Load and repetition belong to the burn-in: without it the run is timed and at full load.
    if (!wireframe_ && burnIn_.enabled()) {
        prepareBurnIn();
    }
    StressStatistics statistics(arguments);
    const StressRun run{services_, arguments, *device, lock, statistics, durationSeconds()};
    std::uint8_t status = operationFailed;
    try {
        status = wireframe_ ? runWireframe(run) : runInWindow(run, loadController_, screenDimensions_);
    } catch (const std::exception&) {
        // What is left is memory of the host, which says nothing about the card.
    }
    arguments.reporter->setProgress(100);
    if (status == TestResult::Passed) {
        statistics.reportResults();
    }
    return conclude(status, arguments);
}

} // namespace vexil::module::video_card
