#pragma once

#include "platform/linux/overlay_painter/text_image.h"
#include "platform/overlay_painter.h"

#include <d3d11_1.h>

#include <cstdint>
#include <memory>

namespace vexil::platform {

/// An object of Direct3D.
template <typename T>
using Owned = std::shared_ptr<T>;

struct TextTarget {
    Owned<ID3D11RenderTargetView> view;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// A text on the card. Without a view there is nothing to see of it.
struct TextTexture {
    Owned<ID3D11ShaderResourceView> view;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// Draws texts by Direct3D with a context state of its own, so that what the renderer has bound stays bound.
class TextPipeline {
public:
    /// Throws `std::runtime_error` if anything cannot be made.
    explicit TextPipeline(ID3D11DeviceContext& context);
    TextPipeline(const TextPipeline&) = delete;
    TextPipeline& operator=(const TextPipeline&) = delete;

    /// Throws likewise.
    [[nodiscard]] TextTarget createTarget(IDXGISurface& surface);
    /// False if the card has no room for it.
    [[nodiscard]] bool createTexture(const TextImage& image, TextTexture& texture);

    /// Between `begin` and `end` the context's state is the pipeline's.
    void begin(const TextTarget& target);
    [[nodiscard]] HRESULT draw(const TextTarget& target, const TextTexture& texture, float x, float y,
                               const OverlayColor& color);
    void end();

private:
    void createShaders();
    void createStates();
    void bind();

    Owned<ID3D11DeviceContext1> context_;
    Owned<ID3D11Device1> device_;
    Owned<ID3DDeviceContextState> own_;
    Owned<ID3DDeviceContextState> renderers_; ///< set between `begin` and `end`
    Owned<ID3D11VertexShader> vertexShader_;
    Owned<ID3D11PixelShader> pixelShader_;
    Owned<ID3D11Buffer> constants_;
    Owned<ID3D11BlendState> blendState_;
};

} // namespace vexil::platform
