#include "module/video_card/stress/rendering/d2d_renderer.h"

#include "module/video_card/stress/rendering/overlay_instruction.h"
#include "utils/accessibility/dpi.h"

#include <stdexcept>

namespace vexil::module::video_card {

D2DRenderer::D2DRenderer(const Dx11Context& dx11, const std::vector<ComShared<IDXGISurface>>& surfaces,
                         std::uint32_t width, std::uint32_t height, float scale)
    : D2DRenderer(platform::createOverlayPainter(dx11.context, surfaces),
                  utils::accessibility::firstMonitorDpi, width, height, scale) {}

D2DRenderer::D2DRenderer(std::unique_ptr<platform::OverlayPainter> painter, std::function<int()> dpi,
                         std::uint32_t width, std::uint32_t height, float scale)
    : width_(static_cast<float>(width)), height_(static_cast<float>(height)), dpi_(std::move(dpi)),
      painter_(std::move(painter)), statisticsFormat_(painter_->createFormat(statisticsFont(scale))) {
    if (!statisticsFormat_) {
        throw std::runtime_error("Failed to create text format");
    }
}

bool D2DRenderer::update(const StressSample& sample) {
    auto layout = painter_->layOut(statisticsText(labels_, sample), *statisticsFormat_, width_, height_);
    if (!layout) {
        return true;
    }
    statistics_ = std::move(layout);
    return false;
}

void D2DRenderer::layOutInstruction() {
    const auto sizes = instructionSizes(dpi_());
    const auto text = instructionText();
    instructionWidth_ = instructionWidth(text, sizes.pointSize);
    const auto format = painter_->createFormat(instructionFont(sizes.pixelSize));
    auto layout = format ? painter_->layOut(text, *format, width_, height_) : nullptr;
    if (layout) {
        instruction_ = std::move(layout);
    }
}

HRESULT D2DRenderer::draw() {
    if (!statistics_) {
        return S_FALSE;
    }
    if (fullScreen_) {
        layOutInstruction();
    }
    for (std::size_t target = 0; target < painter_->targetCount(); ++target) {
        painter_->begin(target);
        painter_->draw(target, statisticsPlace, statisticsPlace, *statistics_);
        if (fullScreen_ && instruction_) {
            painter_->draw(target, width_ - instructionWidth_, 0, *instruction_, instructionColor);
        }
        if (const HRESULT result = painter_->end(target); FAILED(result)) {
            return result;
        }
    }
    return S_OK;
}

} // namespace vexil::module::video_card
