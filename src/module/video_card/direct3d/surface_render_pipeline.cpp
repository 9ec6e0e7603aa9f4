#include "module/video_card/direct3d/surface_render_pipeline.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/depth_stencil.h"
#include "module/video_card/direct3d/resource_creation.h"
#include "module/video_card/direct3d/surface_list.h"
#include "module/video_card/direct3d/textured_quad_shaders.h"
#include "module/video_card/direct3d/textured_vertex.h"

#include <array>
#include <cstdint>
#include <span>

namespace vexil::module::video_card {

namespace {

constexpr std::array corners = {
    TexturedVertex{{-1, -1, 1}, {0, 1}},
    TexturedVertex{{-1, 1, 1}, {0, 0}},
    TexturedVertex{{1, 1, 1}, {1, 0}},
    TexturedVertex{{1, -1, 1}, {1, 1}},
};
static_assert(sizeof(corners) == 80);

constexpr std::array<std::uint32_t, 6> indices = {0, 1, 2, 0, 2, 3};

constexpr D3D11_TEXTURE2D_DESC textureDescription(DXGI_FORMAT format, UINT bindFlags) {
    return plainTexture(surfaceExtent, surfaceExtent, format, bindFlags);
}

} // namespace

HRESULT SurfaceRenderPipeline::create(ID3D11Device& device, ID3D11DeviceContext& context) {
    HRESULT result = createTarget(device, context);
    result = FAILED(result) ? result : createShaders(device);
    result = FAILED(result) ? result : createVertexBuffer(device);
    result = FAILED(result) ? result : createDepth(device, context);
    result = FAILED(result) ? result : createIndexBuffer(device);
    return FAILED(result) ? result : createSampler(device);
}

HRESULT SurfaceRenderPipeline::createTarget(ID3D11Device& device, ID3D11DeviceContext& context) {
    static constexpr auto description =
        textureDescription(DXGI_FORMAT_R8G8B8A8_UNORM, D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE);
    if (const HRESULT result = createTexture(device, description, nullptr, targetTexture); FAILED(result)) {
        return result;
    }
    const HRESULT result = createTargetView(device, *targetTexture, targetView);
    if (SUCCEEDED(result)) {
        const D3D11_VIEWPORT viewport{0, 0, surfaceExtent, surfaceExtent, 0, 1};
        context.RSSetViewports(1, &viewport);
    }
    return result;
}

HRESULT SurfaceRenderPipeline::createShaders(ID3D11Device& device) {
    const auto vertexCode = shaders::texturedQuadVertexShader;
    const auto pixelCode = shaders::texturedQuadPixelShader;
    const HRESULT result = createShaderPair(device, vertexCode, pixelCode, vertexShader, pixelShader);
    return FAILED(result) ? result
                          : createInputLayout(device, texturedVertexElements, vertexCode, inputLayout);
}

HRESULT SurfaceRenderPipeline::createVertexBuffer(ID3D11Device& device) {
    return createGeometryBuffer(device, std::as_bytes(std::span(corners)), D3D11_BIND_VERTEX_BUFFER,
                                vertexBuffer);
}

HRESULT SurfaceRenderPipeline::createDepth(ID3D11Device& device, ID3D11DeviceContext& context) {
    static constexpr auto texture = textureDescription(depthFormat, D3D11_BIND_DEPTH_STENCIL);
    static constexpr auto state = depthStencilDescription();
    return createDepthTarget(device, context, texture, state, {depthTexture, depthState, depthView});
}

HRESULT SurfaceRenderPipeline::createIndexBuffer(ID3D11Device& device) {
    return createGeometryBuffer(device, std::as_bytes(std::span(indices)), D3D11_BIND_INDEX_BUFFER,
                                indexBuffer);
}

HRESULT SurfaceRenderPipeline::createSampler(ID3D11Device& device) {
    D3D11_SAMPLER_DESC description{};
    description.Filter = D3D11_FILTER_MIN_MAG_MIP_LINEAR;
    description.AddressU = D3D11_TEXTURE_ADDRESS_WRAP;
    description.AddressV = D3D11_TEXTURE_ADDRESS_WRAP;
    description.AddressW = D3D11_TEXTURE_ADDRESS_WRAP;
    description.MaxAnisotropy = 1;
    description.ComparisonFunc = D3D11_COMPARISON_ALWAYS;
    description.MaxLOD = D3D11_FLOAT32_MAX;
    return createCom(sampler, [&](auto out) { return device.CreateSamplerState(&description, out); });
}

void SurfaceRenderPipeline::draw(ID3D11DeviceContext& context, ID3D11ShaderResourceView* surfaceView) const {
    static constexpr float white[] = {1, 1, 1, 1};
    static constexpr UINT stride = sizeof(TexturedVertex);
    static constexpr UINT offset = 0;

    auto* const target = targetView.get();
    auto* const vertices = vertexBuffer.get();
    auto* const surfaceSampler = sampler.get();
    context.OMSetRenderTargets(1, &target, depthView.get());
    context.ClearRenderTargetView(target, white);
    context.ClearDepthStencilView(depthView.get(), D3D11_CLEAR_DEPTH | D3D11_CLEAR_STENCIL, 1.0F, 0);
    context.IASetInputLayout(inputLayout.get());
    context.IASetVertexBuffers(0, 1, &vertices, &stride, &offset);
    context.IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLELIST);
    context.IASetIndexBuffer(indexBuffer.get(), DXGI_FORMAT_R32_UINT, 0);
    context.VSSetShader(vertexShader.get(), nullptr, 0);
    context.PSSetShader(pixelShader.get(), nullptr, 0);
    context.PSSetSamplers(0, 1, &surfaceSampler);
    context.PSSetShaderResources(0, 1, &surfaceView);
    context.DrawIndexed(indices.size(), 0, 0);
    context.Flush();
}

} // namespace vexil::module::video_card
