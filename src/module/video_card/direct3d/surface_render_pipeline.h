#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

namespace vexil::module::video_card {

/// The fixed objects with which one run of a video memory test draws its surfaces: a quad over a target of
/// 1024 by 1024 pixels.
struct SurfaceRenderPipeline {
    ComShared<ID3D11InputLayout> inputLayout;
    ComShared<ID3D11Texture2D> targetTexture;
    ComShared<ID3D11RenderTargetView> targetView;
    ComShared<ID3D11Texture2D> depthTexture;
    ComShared<ID3D11DepthStencilState> depthState;
    ComShared<ID3D11DepthStencilView> depthView;
    ComShared<ID3D11SamplerState> sampler;
    ComShared<ID3D11VertexShader> vertexShader;
    ComShared<ID3D11PixelShader> pixelShader;
    ComShared<ID3D11Buffer> vertexBuffer;
    ComShared<ID3D11Buffer> indexBuffer;

    /// Makes all objects and binds what stays bound for the whole run. The first failure ends it and is
    /// returned.
    [[nodiscard]] HRESULT create(ID3D11Device& device, ID3D11DeviceContext& context);

    /// Gives the card the surface behind `surfaceView` to draw with. The quad lies on the far plane, where
    /// the depth test refuses it, so that the target stays white; cards have been driven so since the first
    /// version. None of these calls can tell of a failure; the surface itself is read back.
    void draw(ID3D11DeviceContext& context, ID3D11ShaderResourceView* surfaceView) const;

private:
    [[nodiscard]] HRESULT createTarget(ID3D11Device& device, ID3D11DeviceContext& context);
    [[nodiscard]] HRESULT createShaders(ID3D11Device& device);
    [[nodiscard]] HRESULT createVertexBuffer(ID3D11Device& device);
    [[nodiscard]] HRESULT createDepth(ID3D11Device& device, ID3D11DeviceContext& context);
    [[nodiscard]] HRESULT createIndexBuffer(ID3D11Device& device);
    [[nodiscard]] HRESULT createSampler(ID3D11Device& device);
};

} // namespace vexil::module::video_card
