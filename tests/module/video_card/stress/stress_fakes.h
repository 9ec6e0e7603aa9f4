#pragma once

#include "core/sal.h"
#include "module/video_card/device.h"
#include "module/video_card/stress/rendering/d3d11_renderer.h"
#include "module/video_card/stress/stress_services.h"
#include "text_handlers.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// What a stress test takes from outside, in the hand of a test.
namespace vexil::tests {

/// Stands still but for what a test adds; a tick is a millisecond. Sleeping passes the time.
class FakeTimer final : public SystemTimer {
public:
    std::uint32_t tick = 0;
    std::uint32_t ticksPerQuestion = 0; ///< that each question for the time takes
    std::vector<std::uint32_t> sleeps;  ///< milliseconds, so far

    void sleepMilliseconds(std::uint32_t duration) override {
        sleeps.push_back(duration);
        tick += duration;
    }
    double secondsBetween(std::uint32_t start, std::uint32_t end) override { return (end - start) / 1000.0; }
    std::uint32_t now() override { return tick += ticksPerQuestion; }
};

class FakeRenderer final : public module::video_card::D3D11Renderer {
public:
    float fps = 60;
    std::uint64_t frames = 0;
    bool readable = true;
    std::vector<std::uint32_t> picture = std::vector<std::uint32_t>(16, 0); ///< 4 by 4
    int readBacks = 0;

    bool readBack(module::video_card::ImageReadBack& out) override {
        ++readBacks;
        if (!readable) {
            return false;
        }
        out.data = std::make_shared<D3D11_MAPPED_SUBRESOURCE>();
        out.data->pData = picture.data();
        out.sizeBytes = picture.size() * 4;
        out.width = 4;
        out.height = 4;
        return true;
    }
    std::uint64_t frameCount() override { return frames; }
    float framesPerSecond() override { return fps; }
};

/// Sensors that a test changes while a run goes on.
class FakeSensors final : public module::video_card::VideoCardStatistics {
public:
    using Status = module::video_card::VideoCardStatisticsStatus;
    struct Values {
        std::optional<std::int64_t> temperature = 48;
        std::optional<std::uint64_t> usage = 95;
    };

    explicit FakeSensors(std::shared_ptr<Values> values) : values_(std::move(values)) {}

    [[nodiscard]] bool matches(const module::video_card::AdapterRecord&) const override { return true; }
    Status getTemperature(std::int64_t& celsius) override { return take(values_->temperature, celsius); }
    Status getUsage(std::uint64_t& percent) override { return take(values_->usage, percent); }
    Status getTotalMemory(std::uint64_t&) override { return Status::Unavailable; }
    Status getFreeMemory(std::uint64_t&) override { return Status::Unavailable; }

private:
    template <typename Value>
    static Status take(const std::optional<Value>& from, Value& to) {
        to = from.value_or(to);
        return from ? Status::Ok : Status::Unavailable;
    }

    std::shared_ptr<Values> values_;
};

/// A card without Direct3D, for what only reads its sensors.
struct CardWithSensors {
    CardWithSensors() { device.setStatistics(std::make_unique<FakeSensors>(values)); }

    std::shared_ptr<FakeSensors::Values> values = std::make_shared<FakeSensors::Values>();
    sal::TextHandler strings;
    sal::NumberText numbers;
    module::video_card::Device device{module::video_card::AdapterRecord(), {strings, numbers, 0}};
};

/// What a wireframe scene was asked for, and when it fails.
struct WireframeScript {
    FakeRenderer renderer;
    std::vector<std::string> calls;
    int failingFrame = 0; ///< counted from 1; 0 for none
    int frames = 0;
    std::function<void()> onFrame;
};

class FakeWireframeScene final : public module::video_card::WireframeScene {
public:
    explicit FakeWireframeScene(WireframeScript& script) : script_(script) {}

    void advanceTime() override { script_.calls.emplace_back("advance"); }
    bool renderFrame() override {
        script_.calls.emplace_back("frame");
        ++script_.frames;
        if (script_.onFrame) {
            script_.onFrame();
        }
        return script_.frames != script_.failingFrame;
    }
    module::video_card::D3D11Renderer& renderer() override { return script_.renderer; }

private:
    WireframeScript& script_;
};

/// What a window's scene was asked for, and what fails.
struct WindowScript {
    FakeRenderer renderer;
    bool makesRenderer = true;
    bool makesScene = true;
    bool makesComparison = true;
    std::vector<std::string> calls; ///< all but renderings
    std::vector<float> renderings;  ///< their times
    std::vector<module::video_card::StressSample> overlays;
    module::video_card::WindowScene::Labels labels;
    std::optional<module::video_card::WindowSceneRequest> request;
    std::function<void()> onRender;
};

class FakeWindowScene final : public module::video_card::WindowScene {
public:
    explicit FakeWindowScene(WindowScript& script) : script_(script) {}
    FakeWindowScene(const FakeWindowScene&) = delete;
    FakeWindowScene& operator=(const FakeWindowScene&) = delete;
    ~FakeWindowScene() override { script_.calls.emplace_back("gone"); }

    bool createScene() override {
        script_.calls.emplace_back("scene");
        return script_.makesScene;
    }
    bool createComparison() override {
        script_.calls.emplace_back("comparison");
        return script_.makesComparison;
    }
    void setLabels(const Labels& labels) override {
        script_.calls.emplace_back("labels");
        script_.labels = labels;
    }
    void setFullScreen(bool fullScreen) override {
        script_.calls.emplace_back(fullScreen ? "full screen" : "window");
    }
    bool render(float seconds) override {
        script_.renderings.push_back(seconds);
        ++script_.renderer.frames;
        if (script_.onRender) {
            script_.onRender();
        }
        return false; // which nobody looks at
    }
    void updateOverlay(const module::video_card::StressSample& sample) override {
        script_.overlays.push_back(sample);
    }
    module::video_card::D3D11Renderer& renderer() override { return script_.renderer; }

private:
    WindowScript& script_;
};

} // namespace vexil::tests
