#include "module/video_card/direct3d/surface_render_pipeline.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/depth_stencil.h"
#include "module/video_card/direct3d/surface_list.h"
#include "module/video_card/direct3d/textured_quad_shaders.h"

#include <array>
#include <cstdint>

namespace vexil::module::video_card {

namespace {

struct Vertex {
    float position[3];
    float textureCoordinate[2];
};
static_assert(sizeof(Vertex) == 20);

constexpr std::array corners = {
    Vertex{{-1, -1, 1}, {0, 1}},
    Vertex{{-1, 1, 1}, {0, 0}},
    Vertex{{1, 1, 1}, {1, 0}},
    Vertex{{1, -1, 1}, {1, 1}},
};
static_assert(sizeof(corners) == 80);

constexpr std::array<std::uint32_t, 6> indices = {0, 1, 2, 0, 2, 3};

constexpr std::array inputElements = {
    D3D11_INPUT_ELEMENT_DESC{"POSITION", 0, DXGI_FORMAT_R32G32B32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA,
                             0},
    D3D11_INPUT_ELEMENT_DESC{"TEXCOORD", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 12, D3D11_INPUT_PER_VERTEX_DATA, 0},
};

constexpr D3D11_TEXTURE2D_DESC textureDescription(DXGI_FORMAT format, UINT bindFlags) {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = surfaceExtent;
    description.Height = surfaceExtent;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = format;
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = bindFlags;
    return description;
}

HRESULT createTexture(ID3D11Device& device, const D3D11_TEXTURE2D_DESC& description,
                      ComShared<ID3D11Texture2D>& texture) {
    return createCom(texture, [&](auto out) { return device.CreateTexture2D(&description, nullptr, out); });
}

template <typename Content>
HRESULT createBuffer(ID3D11Device& device, const Content& content, UINT bindFlags,
                     ComShared<ID3D11Buffer>& buffer) {
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = sizeof(content);
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = bindFlags;
    const D3D11_SUBRESOURCE_DATA data{content.data(), 0, 0};
    return createCom(buffer, [&](auto out) { return device.CreateBuffer(&description, &data, out); });
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
    if (const HRESULT result = createTexture(device, description, targetTexture); FAILED(result)) {
        return result;
    }
    D3D11_RENDER_TARGET_VIEW_DESC view{};
    view.Format = description.Format;
    view.ViewDimension = D3D11_RTV_DIMENSION_TEXTURE2D;
    const HRESULT result = createCom(
        targetView, [&](auto out) { return device.CreateRenderTargetView(targetTexture.get(), &view, out); });
    if (SUCCEEDED(result)) {
        const D3D11_VIEWPORT viewport{0, 0, surfaceExtent, surfaceExtent, 0, 1};
        context.RSSetViewports(1, &viewport);
    }
    return result;
}

HRESULT SurfaceRenderPipeline::createShaders(ID3D11Device& device) {
    const auto vertexCode = shaders::texturedQuadVertexShader;
    const auto pixelCode = shaders::texturedQuadPixelShader;
    HRESULT result = createCom(vertexShader, [&](auto out) {
        return device.CreateVertexShader(vertexCode.data(), vertexCode.size(), nullptr, out);
    });
    if (FAILED(result)) {
        return result;
    }
    result = createCom(pixelShader, [&](auto out) {
        return device.CreatePixelShader(pixelCode.data(), pixelCode.size(), nullptr, out);
    });
    if (FAILED(result)) {
        return result;
    }
    return createCom(inputLayout, [&](auto out) {
        return device.CreateInputLayout(inputElements.data(), inputElements.size(), vertexCode.data(),
                                        vertexCode.size(), out);
    });
}

HRESULT SurfaceRenderPipeline::createVertexBuffer(ID3D11Device& device) {
    return createBuffer(device, corners, D3D11_BIND_VERTEX_BUFFER, vertexBuffer);
}

HRESULT SurfaceRenderPipeline::createDepth(ID3D11Device& device, ID3D11DeviceContext& context) {
    static constexpr auto texture = textureDescription(depthFormat, D3D11_BIND_DEPTH_STENCIL);
    static constexpr auto state = depthStencilDescription();
    static constexpr auto view = depthViewDescription();

    HRESULT result = createTexture(device, texture, depthTexture);
    if (FAILED(result)) {
        return result;
    }
    result = createCom(depthState, [&](auto out) { return device.CreateDepthStencilState(&state, out); });
    if (FAILED(result)) {
        return result;
    }
    context.OMSetDepthStencilState(depthState.get(), stencilReference);
    return createCom(depthView,
                     [&](auto out) { return device.CreateDepthStencilView(depthTexture.get(), &view, out); });
}

HRESULT SurfaceRenderPipeline::createIndexBuffer(ID3D11Device& device) {
    return createBuffer(device, indices, D3D11_BIND_INDEX_BUFFER, indexBuffer);
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
    static constexpr UINT stride = sizeof(Vertex);
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
