#include "core/sal.h"
#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/stress/rendering/d3d11_animation_renderer.h"
#include "module/video_card/stress/rendering/d3d11_offscreen_renderer.h"
#include "module/video_card/stress/rendering/quad_objects.h"
#include "module/video_card/stress/rendering/sphere_objects.h"
#include "module/video_card/stress/stress_services.h"
#include "platform/swap_chain_window.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <exception>
#include <thread>
#include <utility>

namespace vexil::module::video_card {

namespace {

constexpr std::uint32_t offscreenWidth = 1920;
constexpr std::uint32_t offscreenHeight = 1080;
constexpr std::uint32_t sphereSegments = 100;

/// Far longer than a frame takes: a card that takes it is not waited for, so that the run can be ended.
constexpr std::chrono::seconds longestFrame{2};

/// Waits for the frame before the last one. Nothing else holds a renderer without a window back: its driver
/// would put frames by the dozen on the card's list, and a run would end long after its time.
class FrameLimit {
public:
    explicit FrameLimit(const Dx11Context& dx11) : dx11_(dx11) {
        for (auto& query : queries_) {
            static constexpr D3D11_QUERY_DESC description{D3D11_QUERY_EVENT, 0};
            static_cast<void>(
                createCom(query, [&](auto out) { return dx11.device->CreateQuery(&description, out); }));
        }
    }

    /// Behind each frame.
    void frameDrawn() {
        auto& query = queries_[frames_ % queries_.size()];
        if (!query) {
            return; // a card that keeps no account is not held back
        }
        dx11_.context->End(query.get());
        ++frames_;
        auto& earlier = queries_[frames_ % queries_.size()];
        if (frames_ < queries_.size() || !earlier) {
            return;
        }
        BOOL done = FALSE;
        const auto end = std::chrono::steady_clock::now() + longestFrame;
        while (dx11_.context->GetData(earlier.get(), &done, sizeof done, 0) == S_FALSE &&
               dx11_.device->GetDeviceRemovedReason() == S_OK && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    }

private:
    Dx11Context dx11_;
    std::array<ComShared<ID3D11Query>, 2> queries_;
    std::size_t frames_ = 0;
};

class SphereScene final : public WireframeScene {
public:
    SphereScene(const Dx11Context& dx11, std::shared_ptr<D3D11OffscreenRenderer> renderer)
        : renderer_(std::move(renderer)), limit_(dx11) {}

    void advanceTime() override { renderer_->advanceTime(); }
    bool renderFrame() override {
        const bool drawn = renderer_->renderFrame();
        if (drawn) {
            limit_.frameDrawn();
        }
        return drawn;
    }
    D3D11Renderer& renderer() override { return *renderer_; }

private:
    std::shared_ptr<D3D11OffscreenRenderer> renderer_;
    FrameLimit limit_;
};

std::unique_ptr<WireframeScene> createSphereScene(const Dx11Context& dx11) {
    try {
        auto renderer = createOffscreenRenderer(dx11, offscreenWidth, offscreenHeight, true);
        auto objects = createSphereObjects(sphereSegments, dx11).value;
        if (objects.empty()) {
            return nullptr;
        }
        renderer->setObjects(std::move(objects));
        return std::make_unique<SphereScene>(dx11, std::move(renderer));
    } catch (const std::exception&) {
        return nullptr;
    }
}

class LandscapeScene final : public WindowScene {
public:
    explicit LandscapeScene(const WindowSceneRequest& request)
        : dx11_(request.dx11), width_(request.width), height_(request.height), window_(request.window),
          renderer_(std::make_shared<D3D11AnimationRenderer>(request.dx11,
                                                             static_cast<HWND>(window_.handle()),
                                                             request.width, request.height, request.scale)) {}

    bool createScene() override {
        auto object = createSceneObject(width_, height_, dx11_);
        if (FAILED(object.result)) {
            return false;
        }
        renderer_->setSceneObject(std::move(object.value));
        return true;
    }
    bool createComparison() override {
        auto object = createCompareObject(width_, height_, dx11_);
        if (FAILED(object.result)) {
            return false;
        }
        renderer_->setCompareObject(std::move(object.value));
        return true;
    }
    void setLabels(const Labels& labels) override {
        renderer_->setFpsLabel(labels.fps);
        renderer_->setUsageLabel(labels.usage);
        renderer_->setTemperatureLabel(labels.temperature);
    }
    void setFullScreen(bool fullScreen) override { renderer_->setFullScreen(fullScreen); }
    bool render(float seconds) override { return renderer_->render(seconds); }
    void updateOverlay(const StressSample& sample) override { renderer_->updateOverlay(sample); }
    D3D11Renderer& renderer() override { return *renderer_; }

private:
    Dx11Context dx11_;
    std::uint32_t width_;
    std::uint32_t height_;
    platform::SwapChainWindow window_; // in front of the renderer, whose swap chain stands on it
    std::shared_ptr<D3D11AnimationRenderer> renderer_;
};

std::unique_ptr<WindowScene> createLandscapeScene(const WindowSceneRequest& request) {
    try {
        return std::make_unique<LandscapeScene>(request);
    } catch (const std::exception&) {
        return nullptr;
    }
}

} // namespace

StressServices systemStressServices() { return {get_timer(), createSphereScene, createLandscapeScene}; }

} // namespace vexil::module::video_card
