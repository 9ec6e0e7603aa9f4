#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/d3d11_renderer.h"
#include "module/video_card/stress/rendering/matrix.h"
#include "module/video_card/stress/rendering/render_object.h"
#include "module/video_card/stress/rendering/stress_sample.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vexil::module::video_card {

class D2DRenderer;

/// Shows the scene in a window. Each frame is drawn twice, into the back buffer and into a second texture,
/// and a third pass keeps every pixel in which the two differ: that comparison is what `readBack` gives.
class D3D11AnimationRenderer : public D3D11Renderer {
public:
    /// The window outlives the renderer. Throws `std::runtime_error` with "Failed to create swap chain!", and
    /// `std::exception` if any other object cannot be made. `scale` is that of the overlay's text.
    D3D11AnimationRenderer(Dx11Context dx11, HWND windowHandle, std::uint32_t width, std::uint32_t height,
                           float scale);
    ~D3D11AnimationRenderer() override;

    [[nodiscard]] bool readBack(ImageReadBack& out) override; ///< of the comparison, not of the picture
    /// Draws, not frames: three for each frame that is shown. `framesPerSecond` counts them likewise.
    [[nodiscard]] std::uint64_t frameCount() override { return frameCount_; }
    [[nodiscard]] float framesPerSecond() override;

    void setSceneObject(RenderObject object);
    void setCompareObject(RenderObject object);
    /// One frame at the time of the animation. False if a draw failed; the frame is not shown then.
    [[nodiscard]] bool render(float seconds);

    void setFpsLabel(std::wstring label);
    void setUsageLabel(std::wstring label);
    void setTemperatureLabel(std::wstring label);
    void setFullScreen(bool fullScreen);
    void updateOverlay(const StressSample& sample);

private:
    struct Matrices {
        Matrix world;
        Matrix view;
        Matrix projection;
    };
    static_assert(sizeof(Matrices) == 192);

    /// As the shaders see it.
    struct ResolutionBuffer {
        float width;
        float height;
        float iTime;
        float padding;
    };
    static_assert(sizeof(ResolutionBuffer) == 16);

    void createSwapChain();
    void createBackBuffer();
    void createTextures();
    void createDepth();
    void createRasterizerState();
    void createConstantBuffers();
    void createOverlay(float scale);
    void bindConstants(float seconds);
    void beginPass(ID3D11RenderTargetView* target);
    [[nodiscard]] HRESULT draw(const RenderObject& object);

    std::uint32_t width_;
    std::uint32_t height_;
    ComShared<ID3D11Texture2D> stagingTexture_;
    ComShared<ID3D11Texture2D> compareTexture_;
    ComShared<ID3D11RenderTargetView> compareView_;
    Dx11Context dx11_;
    HWND windowHandle_;
    std::uint64_t frameCount_ = 0;
    std::int64_t startNanoseconds_ = 0;
    Matrices matrices_{};
    ResolutionBuffer resolution_{};
    ComShared<ID3D11Buffer> matrixBuffer_;
    ComShared<ID3D11Buffer> resolutionBuffer_;
    RenderObject sceneObject_;
    RenderObject compareObject_;
    std::shared_ptr<D2DRenderer> overlay_;
    ComShared<IDXGISwapChain> swapChain_;
    ComShared<ID3D11Texture2D> backBuffer_;
    ComShared<ID3D11RenderTargetView> backBufferView_;
    ComShared<ID3D11ShaderResourceView> backBufferResourceView_;
    ComShared<ID3D11Texture2D> secondTexture_;
    ComShared<ID3D11RenderTargetView> secondView_;
    ComShared<ID3D11ShaderResourceView> secondResourceView_;
    ComShared<ID3D11Texture2D> depthTexture_;
    ComShared<ID3D11DepthStencilState> depthState_;
    ComShared<ID3D11DepthStencilView> depthView_;
    ComShared<ID3D11RasterizerState> rasterizerState_;
};

} // namespace vexil::module::video_card
