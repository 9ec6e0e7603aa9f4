#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/stress_sample.h"

#include <dxgi.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vexil::platform {
class OverlayPainter;
class OverlayText;
} // namespace vexil::platform

namespace vexil::module::video_card {

/// Writes the live figures, and in full screen how to leave it, over pictures of the card. All of them get the
/// same text, so that a comparison of them stays undisturbed.
class D2DRenderer {
public:
    /// The surfaces are of `width` by `height` pixels. Throws `std::exception` if anything cannot be made.
    D2DRenderer(const Dx11Context& dx11, const std::vector<ComShared<IDXGISurface>>& surfaces,
                std::uint32_t width, std::uint32_t height, float scale);
    D2DRenderer(const D2DRenderer&) = delete;
    D2DRenderer& operator=(const D2DRenderer&) = delete;
    ~D2DRenderer();

    void setFpsLabel(std::wstring label) { fpsLabel_ = std::move(label); }
    void setUsageLabel(std::wstring label) { usageLabel_ = std::move(label); }
    void setTemperatureLabel(std::wstring label) { temperatureLabel_ = std::move(label); }
    void setFullScreen(bool fullScreen) { fullScreen_ = fullScreen; }

    /// Lays out the text of a sample. True if no layout came of it; the text before stays then.
    bool update(const StressSample& sample);

    /// 0, or the failure of a target; 1 while there is no text yet, and nothing was drawn.
    [[nodiscard]] HRESULT draw();

private:
    void layOutInstruction();

    bool fullScreen_ = false;
    std::uint32_t width_;
    std::uint32_t height_;
    float scale_;
    std::wstring fpsLabel_;
    std::wstring usageLabel_;
    std::wstring temperatureLabel_;
    std::unique_ptr<platform::OverlayPainter> painter_;
    std::shared_ptr<platform::OverlayText> statistics_;
    std::shared_ptr<platform::OverlayText> instruction_;
    float instructionWidth_ = 0;
};

} // namespace vexil::module::video_card
