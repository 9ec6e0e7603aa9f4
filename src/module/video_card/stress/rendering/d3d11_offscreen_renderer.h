#pragma once

#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/stress/rendering/d3d11_renderer.h"
#include "module/video_card/stress/rendering/matrix.h"
#include "module/video_card/stress/rendering/offscreen_target.h"
#include "module/video_card/stress/rendering/render_object.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vexil::module::video_card {

/// Draws objects with no window into two targets in turn. The pixel shader compares each pixel with the frame
/// before: an equal one is left empty, so a healthy card alternates between the picture and nothing.
class D3D11OffscreenRenderer : public D3D11Renderer {
public:
    /// Throws `std::exception` if any object cannot be made.
    D3D11OffscreenRenderer(Dx11Context dx11, std::uint32_t width, std::uint32_t height, bool wireframe);

    [[nodiscard]] bool readBack(ImageReadBack& out) override; ///< of the newest picture
    [[nodiscard]] std::uint64_t frameCount() override { return frames_; }
    [[nodiscard]] float framesPerSecond() override;

    /// Adds the objects to those that are drawn.
    void setObjects(std::vector<RenderObject> objects);
    void advanceTime();
    /// False if the card is gone or the comparison's pattern is missing. A frame whose matrices could not be
    /// handed to the card counts as drawn.
    [[nodiscard]] bool renderFrame();

private:
    struct Matrices {
        Matrix model;
        Matrix view;
        Matrix projection;
    };
    static_assert(sizeof(Matrices) == 192);

    void createTargets();
    void createDepth();
    void createRasterizerState();
    void createMatrices();
    void createPattern();
    void createStaging();
    [[nodiscard]] std::size_t previousIndex() const;
    [[nodiscard]] HRESULT drawScene(const OffscreenTarget& target, float angle);

    Dx11Context dx11_;
    std::uint32_t width_;
    std::uint32_t height_;
    bool wireframe_;
    ComShared<ID3D11Texture2D> depthTexture_;
    ComShared<ID3D11DepthStencilState> depthState_;
    ComShared<ID3D11DepthStencilView> depthView_;
    ComShared<ID3D11RasterizerState> rasterizerState_;
    Matrices matrices_{};
    ComShared<ID3D11Buffer> constantBuffer_;
    std::vector<RenderObject> objects_;
    std::uint64_t frameIndex_ = 0; ///< of the target that the next frame is drawn to
    std::array<OffscreenTarget, 2> targets_;
    ComShared<ID3D11Texture2D> stagingTexture_;
    ComShared<ID3D11Texture2D> patternTexture_;
    ComShared<ID3D11ShaderResourceView> patternView_;
    ComShared<ID3D11SamplerState> patternSampler_;
    std::int64_t startNanoseconds_ = 0;
    std::uint64_t frames_ = 0;
    float time_ = 0;
};

/// Throws `std::exception` if any object cannot be made.
[[nodiscard]] std::shared_ptr<D3D11OffscreenRenderer>
createOffscreenRenderer(const Dx11Context& dx11, std::uint32_t width, std::uint32_t height, bool wireframe);

} // namespace vexil::module::video_card
