#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/overlay_text.h"
#include "module/video_card/stress/rendering/stress_sample.h"
#include "platform/overlay_painter.h"

#include <dxgi.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vexil::module::video_card {

/// Writes the live figures, and in full screen how to leave it, over pictures of the card. All of them get
/// the same text, so that a comparison of them stays undisturbed. Used on the GUI thread.
class D2DRenderer {
public:
    /// The surfaces are of `width` by `height` pixels. Throws `std::exception` if anything cannot be made.
    D2DRenderer(const Dx11Context& dx11, const std::vector<ComShared<IDXGISurface>>& surfaces,
                std::uint32_t width, std::uint32_t height, float scale);
    /// With a painter of the caller's, and its own answer to what the dots per inch of the first monitor are.
    D2DRenderer(std::unique_ptr<platform::OverlayPainter> painter, std::function<int()> dpi,
                std::uint32_t width, std::uint32_t height, float scale);

    void setFpsLabel(std::wstring label) { labels_.fps = std::move(label); }
    void setUsageLabel(std::wstring label) { labels_.usage = std::move(label); }
    void setTemperatureLabel(std::wstring label) { labels_.temperature = std::move(label); }
    void setFullScreen(bool fullScreen) { fullScreen_ = fullScreen; }

    /// Lays out the text of a sample. True if no layout came of it; the text before stays then.
    bool update(const StressSample& sample);

    /// 0, or the failure of a target; 1 while there is no text yet, and nothing was drawn.
    [[nodiscard]] HRESULT draw();

private:
    void layOutInstruction();

    bool fullScreen_ = false;
    float width_;
    float height_;
    OverlayLabels labels_;
    std::function<int()> dpi_;
    std::unique_ptr<platform::OverlayPainter> painter_;
    std::shared_ptr<const platform::OverlayFormat> statisticsFormat_;
    std::shared_ptr<const platform::OverlayText> statistics_;
    std::shared_ptr<const platform::OverlayText> instruction_;
    float instructionWidth_ = 0;
};

} // namespace vexil::module::video_card
