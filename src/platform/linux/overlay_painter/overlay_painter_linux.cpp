#include "platform/overlay_painter.h"

#include "platform/linux/overlay_painter/text_image.h"
#include "platform/linux/overlay_painter/text_pipeline.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <stdexcept>
#include <utility>

namespace vexil::platform {

namespace {

constexpr OverlayColor white{1, 1, 1, 1};

class PaintedFormat final : public OverlayFormat {
public:
    explicit PaintedFormat(const OverlayFont& font) : font_(font) {}
    [[nodiscard]] const OverlayFont& font() const { return font_; }

private:
    OverlayFont font_;
};

class PaintedText final : public OverlayText {
public:
    explicit PaintedText(TextTexture texture) : texture_(std::move(texture)) {}
    [[nodiscard]] const TextTexture& texture() const { return texture_; }

private:
    TextTexture texture_;
};

/// What a text was painted from.
struct Recipe {
    std::wstring text;
    std::wstring family;
    int weight;
    int stretch;
    float pixelSize;
    float maximumWidth;
    float maximumHeight;

    bool operator==(const Recipe&) const = default;
};

class OverlayPainterOverDirect3D final : public OverlayPainter {
public:
    OverlayPainterOverDirect3D(ID3D11DeviceContext& context,
                               const std::vector<std::shared_ptr<IDXGISurface>>& surfaces)
        : pipeline_(context) {
        for (const auto& surface : surfaces) {
            targets_.push_back(pipeline_.createTarget(*surface));
        }
    }

    std::size_t targetCount() const override { return targets_.size(); }

    std::shared_ptr<const OverlayFormat> createFormat(const OverlayFont& font) override {
        const bool possible = std::isfinite(font.pixelSize) && font.pixelSize > 0;
        return possible ? std::make_shared<PaintedFormat>(font) : nullptr;
    }

    /// A text that is laid out anew for every frame is painted once for as long as somebody holds it.
    std::shared_ptr<const OverlayText> layOut(const std::wstring& text, const OverlayFormat& format,
                                              float maximumWidth, float maximumHeight) override {
        const auto& font = static_cast<const PaintedFormat&>(format).font();
        const Recipe recipe{text,           font.family,  font.weight,  font.stretch,
                            font.pixelSize, maximumWidth, maximumHeight};
        std::erase_if(painted_, [](const auto& entry) { return entry.second.expired(); });
        const auto known =
            std::ranges::find_if(painted_, [&](const auto& entry) { return entry.first == recipe; });
        if (known != painted_.end()) {
            return known->second.lock();
        }
        TextTexture texture;
        if (!pipeline_.createTexture(paintText(text, font, maximumWidth, maximumHeight), texture)) {
            return nullptr;
        }
        auto made = std::make_shared<const PaintedText>(std::move(texture));
        painted_.emplace_back(recipe, made);
        return made;
    }

    void begin(std::size_t target) override {
        result_ = S_OK;
        pipeline_.begin(targets_[target]);
    }

    void draw(std::size_t target, float x, float y, const OverlayText& text) override {
        draw(target, x, y, text, white);
    }

    void draw(std::size_t target, float x, float y, const OverlayText& text,
              const OverlayColor& color) override {
        const auto& texture = static_cast<const PaintedText&>(text).texture();
        const HRESULT result = pipeline_.draw(targets_[target], texture, x, y, color);
        result_ = FAILED(result_) ? result_ : result;
    }

    HRESULT end(std::size_t) override {
        pipeline_.end();
        return result_;
    }

private:
    TextPipeline pipeline_;
    std::vector<TextTarget> targets_;
    std::vector<std::pair<Recipe, std::weak_ptr<const PaintedText>>> painted_;
    HRESULT result_ = S_OK;
};

} // namespace

std::unique_ptr<OverlayPainter>
createOverlayPainter(const std::shared_ptr<ID3D11DeviceContext>& context,
                     const std::vector<std::shared_ptr<IDXGISurface>>& surfaces) {
    if (!canPaintText()) {
        throw std::runtime_error("The overlay needs a QGuiApplication for its fonts");
    }
    return std::make_unique<OverlayPainterOverDirect3D>(*context, surfaces);
}

} // namespace vexil::platform
