#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/stress_sample.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class SystemTimer;

namespace vexil::module::video_card {

class D3D11Renderer;

/// What the wireframe test renders, with no window.
class WireframeScene {
public:
    virtual ~WireframeScene() = default;
    virtual void advanceTime() = 0;
    /// False if the card is gone or the targets cannot be bound.
    [[nodiscard]] virtual bool renderFrame() = 0;
    [[nodiscard]] virtual D3D11Renderer& renderer() = 0;
};

/// What the stress test shows in its window.
class WindowScene {
public:
    /// The overlay's labels, translated.
    struct Labels {
        std::wstring fps;
        std::wstring usage;
        std::wstring temperature;
    };

    virtual ~WindowScene() = default;
    /// The animation, and the pass that compares its two pictures. Both are needed before the first frame;
    /// false if one cannot be made.
    [[nodiscard]] virtual bool createScene() = 0;
    [[nodiscard]] virtual bool createComparison() = 0;
    virtual void setLabels(const Labels& labels) = 0;
    virtual void setFullScreen(bool fullScreen) = 0;
    virtual bool render(float seconds) = 0;
    virtual void updateOverlay(const StressSample& sample) = 0;
    [[nodiscard]] virtual D3D11Renderer& renderer() = 0;
};

struct WindowSceneRequest {
    Dx11Context dx11;
    std::uintptr_t window; ///< as the window system numbers it
    std::uint32_t width;   ///< in pixels, as `height`
    std::uint32_t height;
    float scale; ///< of the overlay: the dots per inch of the screen
};

/// What the stress tests take from outside: time, and what renders. Tests put their own in its place.
struct StressServices {
    SystemTimer* timer;
    /// Null if the renderer or its models cannot be made.
    std::function<std::unique_ptr<WireframeScene>(const Dx11Context&)> createWireframeScene;
    /// Null if the renderer cannot be made.
    std::function<std::unique_ptr<WindowScene>(const WindowSceneRequest&)> createWindowScene;
};

/// The suite's timer and the renderers on the card.
[[nodiscard]] StressServices systemStressServices();

} // namespace vexil::module::video_card
