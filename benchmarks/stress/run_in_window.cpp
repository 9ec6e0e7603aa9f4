#include "stress/run_in_window.h"

#include "core/test_reporter.h"
#include "module/video_card/stress/stress_codes.h"
#include "module/video_card/stress/stress_test_dialog.h"
#include "module/video_card/test_parameter_screen_dimensions.h"
#include "text_handlers.h"

#include <QTimer>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <utility>

namespace vexil::benchmarks {

using namespace module::video_card;
using Clock = std::chrono::steady_clock;

namespace {

constexpr float settledSeconds = 1;
constexpr int tenSeconds = 10'000;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The real scene, with an account of its frames.
class CountedScene final : public WindowScene {
public:
    CountedScene(std::unique_ptr<WindowScene> scene, WindowFrames& account)
        : scene_(std::move(scene)), account_(account) {}

    bool createScene() override { return scene_->createScene(); }
    bool createComparison() override { return scene_->createComparison(); }
    void setLabels(const Labels& labels) override { scene_->setLabels(labels); }
    void setFullScreen(bool fullScreen) override { scene_->setFullScreen(fullScreen); }
    bool render(float seconds) override {
        if (seconds >= settledSeconds) {
            start_ = start_.value_or(Clock::now());
            account_ = {rendered_++, secondsSince(*start_)};
        }
        return scene_->render(seconds);
    }
    void updateOverlay(const StressSample& sample) override { scene_->updateOverlay(sample); }
    D3D11Renderer& renderer() override { return scene_->renderer(); }

private:
    std::unique_ptr<WindowScene> scene_;
    WindowFrames& account_;
    std::uint64_t rendered_ = 0;
    std::optional<Clock::time_point> start_;
};

/// Sensors whose readings change with every question, so that the overlay is laid out each time.
class ChangingSensors final : public VideoCardStatistics {
public:
    using Status = VideoCardStatisticsStatus;

    [[nodiscard]] bool matches(const AdapterRecord&) const override { return true; }
    Status getTemperature(std::int64_t& celsius) override {
        celsius = 40 + static_cast<std::int64_t>(++questions_ % 50);
        return Status::Ok;
    }
    Status getUsage(std::uint64_t& percent) override {
        percent = ++questions_ % 100;
        return Status::Ok;
    }
    Status getTotalMemory(std::uint64_t&) override { return Status::Unavailable; }
    Status getFreeMemory(std::uint64_t&) override { return Status::Unavailable; }

private:
    std::uint64_t questions_ = 0;
};

class SilentReporter final : public core::TestReporter {
public:
    void setProgress(std::uint8_t) override {}
    void report(const core::TestMessage&) override {}
    void interact(std::unique_ptr<core::InputInteraction>&) override {}
};

} // namespace

WindowFrames runInWindow(const Dx11Context& dx11, const WindowSetup& setup) {
    WindowFrames account;
    auto services = systemStressServices();
    services.createWindowScene = [&, create = services.createWindowScene](WindowSceneRequest request) {
        request.width = setup.extent.value_or(request.width);
        request.height = setup.extent.value_or(request.height);
        auto scene = create(request);
        return scene ? std::make_unique<CountedScene>(std::move(scene), account) : nullptr;
    };
    sal::TextHandler strings;
    sal::NumberText numbers;
    Device device(AdapterRecord(), {strings, numbers, 0});
    device.setStatistics(std::make_unique<ChangingSensors>());
    device.setDirect3D(dx11);
    const auto lock = device.lock();
    std::uint8_t cancel = 0;
    SilentReporter reporter;
    const core::TestRunArguments arguments{
        {}, &cancel, &reporter, std::make_shared<core::SystemEventState>()};
    StressStatistics statistics(arguments);
    TestParameterScreenDimensions dimensions;
    dimensions.setValue(setup.size);
    LoadController controller;
    controller.loadFraction = setup.load;

    StressTestDialog dialog({services, arguments, device, lock, statistics, setup.seconds}, controller,
                            nullptr, nullptr, dimensions, 96.0F);
    QTimer timer;
    const auto start = Clock::now();
    if (setup.eachTenSeconds) {
        QObject::connect(&timer, &QTimer::timeout, &dialog,
                         [&] { setup.eachTenSeconds(secondsSince(start)); });
        timer.start(tenSeconds);
    }
    if (const int code = dialog.exec(); code != StressCode::TimeIsUp) {
        throw std::runtime_error("the window ended with the code " + std::to_string(code));
    }
    return account;
}

} // namespace vexil::benchmarks
