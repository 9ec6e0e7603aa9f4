#include "module/video_card/stress/rendering/d3d11_animation_renderer.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/depth_stencil.h"
#include "module/video_card/stress/rendering/d2d_renderer.h"
#include "module/video_card/stress/rendering/render_resources.h"

#include <array>
#include <cstring>
#include <span>
#include <utility>
#include <vector>

namespace vexil::module::video_card {

namespace {

constexpr float nearPlane = 0.1F;
constexpr float farPlane = 1000;
/// The standard pattern of samples, which the drivers are asked for with one sample as well.
constexpr UINT standardSamplePattern = 0xFFFFFFFF;
constexpr UINT allMipLevels = 0xFFFFFFFF;

ComShared<IDXGISurface> surfaceOf(ID3D11Texture2D& texture) {
    ComShared<IDXGISurface> surface;
    orThrow(createCom(surface,
                      [&](IDXGISurface** out) {
                          return texture.QueryInterface(__uuidof(IDXGISurface),
                                                        reinterpret_cast<void**>(out));
                      }),
            "Failed to get surface");
    return surface;
}

} // namespace

D3D11AnimationRenderer::D3D11AnimationRenderer(Dx11Context dx11, HWND windowHandle, std::uint32_t width,
                                               std::uint32_t height, float scale)
    : width_(width), height_(height), dx11_(std::move(dx11)), windowHandle_(windowHandle) {
    createSwapChain();
    createBackBuffer();
    createTextures();
    createDepth();
    createRasterizerState();
    createConstantBuffers();
    createOverlay(scale);
    setWholeViewport(*dx11_.context, width_, height_);
}

D3D11AnimationRenderer::~D3D11AnimationRenderer() = default;

void D3D11AnimationRenderer::createSwapChain() {
    DXGI_SWAP_CHAIN_DESC description{};
    description.BufferDesc.Width = width_;
    description.BufferDesc.Height = height_;
    description.BufferDesc.RefreshRate = {60, 1};
    description.BufferDesc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    description.BufferDesc.ScanlineOrdering = DXGI_MODE_SCANLINE_ORDER_PROGRESSIVE;
    description.BufferDesc.Scaling = DXGI_MODE_SCALING_UNSPECIFIED;
    description.SampleDesc = {1, standardSamplePattern};
    description.BufferUsage = DXGI_USAGE_RENDER_TARGET_OUTPUT | DXGI_USAGE_SHADER_INPUT;
    description.BufferCount = 1;
    description.OutputWindow = windowHandle_;
    description.Windowed = TRUE;
    description.SwapEffect = DXGI_SWAP_EFFECT_DISCARD;
    orThrow(createCom(swapChain_,
                      [&](auto out) {
                          return dx11_.adapterInfo.factory->CreateSwapChain(dx11_.device.get(), &description,
                                                                            out);
                      }),
            "Failed to create swap chain!");
}

void D3D11AnimationRenderer::createBackBuffer() {
    static constexpr const char* failure = "Failed to get back buffer";
    auto& device = *dx11_.device;
    orThrow(createCom(backBuffer_,
                      [&](ID3D11Texture2D** out) {
                          return swapChain_->GetBuffer(0, __uuidof(ID3D11Texture2D),
                                                       reinterpret_cast<void**>(out));
                      }),
            failure);
    orThrow(createTargetView(device, *backBuffer_, backBufferView_), failure);
    orThrow(createResourceView(device, *backBuffer_, allMipLevels, backBufferResourceView_), failure);
}

void D3D11AnimationRenderer::createTextures() {
    static constexpr const char* failure = "Failed to create render target";
    auto& device = *dx11_.device;
    const auto description = descriptionOf(*backBuffer_);
    orThrow(createTexture(device, description, nullptr, secondTexture_), failure);
    orThrow(createTargetView(device, *secondTexture_, secondView_), failure);
    orThrow(createResourceView(device, *secondTexture_, allMipLevels, secondResourceView_), failure);
    orThrow(createTexture(device, description, nullptr, compareTexture_), failure);
    orThrow(createTargetView(device, *compareTexture_, compareView_), failure);
    orThrow(createTexture(device, stagingDescription(*backBuffer_), nullptr, stagingTexture_), failure);
}

void D3D11AnimationRenderer::createDepth() {
    auto description = plainTexture(width_, height_, depthFormat, D3D11_BIND_DEPTH_STENCIL);
    description.SampleDesc.Quality = standardSamplePattern;
    auto state = depthStencilDescription();
    state.DepthEnable = FALSE;
    orThrow(createDepthTarget(*dx11_.device, *dx11_.context, description, state,
                              {depthTexture_, depthState_, depthView_}),
            "Failed to create depth buffer");
}

void D3D11AnimationRenderer::createRasterizerState() {
    orThrow(createRasterizer(*dx11_.device, *dx11_.context, D3D11_FILL_SOLID, false, rasterizerState_),
            "Failed to create rasterizer state");
}

void D3D11AnimationRenderer::createConstantBuffers() {
    static constexpr const char* failure = "Failed to create constant buffer";
    auto& device = *dx11_.device;
    const auto width = static_cast<float>(width_);
    const auto height = static_cast<float>(height_);
    matrices_ = {identityMatrix(), lookToMatrix({0, 0, -10}, {0, 0, 10}, {0, 1, 0}),
                 orthographicMatrix(width, height, nearPlane, farPlane)};
    orThrow(createConstantBuffer(device, std::as_bytes(std::span(&matrices_, 1)), matrixBuffer_), failure);
    resolution_ = {width, height, 0, 0};
    orThrow(createConstantBuffer(device, std::as_bytes(std::span(&resolution_, 1)), resolutionBuffer_),
            failure);
    orThrow(resolutionBuffer_ ? S_OK : E_POINTER, failure);
}

void D3D11AnimationRenderer::createOverlay(float scale) {
    const std::vector surfaces = {surfaceOf(*backBuffer_), surfaceOf(*secondTexture_)};
    overlay_ = std::make_shared<D2DRenderer>(dx11_, surfaces, width_, height_, scale);
}

void D3D11AnimationRenderer::setSceneObject(RenderObject object) { sceneObject_ = std::move(object); }

void D3D11AnimationRenderer::setCompareObject(RenderObject object) { compareObject_ = std::move(object); }

void D3D11AnimationRenderer::setFpsLabel(std::wstring label) { overlay_->setFpsLabel(std::move(label)); }

void D3D11AnimationRenderer::setUsageLabel(std::wstring label) { overlay_->setUsageLabel(std::move(label)); }

void D3D11AnimationRenderer::setTemperatureLabel(std::wstring label) {
    overlay_->setTemperatureLabel(std::move(label));
}

void D3D11AnimationRenderer::setFullScreen(bool fullScreen) { overlay_->setFullScreen(fullScreen); }

void D3D11AnimationRenderer::updateOverlay(const StressSample& sample) {
    static_cast<void>(overlay_->update(sample));
}

bool D3D11AnimationRenderer::render(float seconds) {
    bindConstants(seconds);
    for (auto* const picture : {backBufferView_.get(), secondView_.get()}) {
        beginPass(picture);
        if (FAILED(draw(sceneObject_))) {
            return false;
        }
    }
    // Over both pictures, so that they stay equal. A text that could not be drawn is no fault of the card.
    static_cast<void>(overlay_->draw());

    // The back buffer may be read only before it is shown.
    const std::array pictures = {backBufferResourceView_.get(), secondResourceView_.get()};
    beginPass(compareView_.get());
    dx11_.context->PSSetShaderResources(0, static_cast<UINT>(pictures.size()), pictures.data());
    if (FAILED(draw(compareObject_))) {
        return false;
    }
    static_cast<void>(swapChain_->Present(0, 0));
    return true;
}

void D3D11AnimationRenderer::bindConstants(float seconds) {
    auto& context = *dx11_.context;
    ID3D11Buffer* const none = nullptr;
    context.PSSetConstantBuffers(0, 1, &none);
    resolution_.iTime = seconds;
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (FAILED(context.Map(resolutionBuffer_.get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped))) {
        return;
    }
    std::memcpy(mapped.pData, &resolution_, sizeof resolution_);
    context.Unmap(resolutionBuffer_.get(), 0);
    auto* const matrices = matrixBuffer_.get();
    auto* const resolution = resolutionBuffer_.get();
    context.VSSetConstantBuffers(0, 1, &matrices);
    context.PSSetConstantBuffers(0, 1, &resolution);
}

void D3D11AnimationRenderer::beginPass(ID3D11RenderTargetView* target) {
    static constexpr float blank[] = {0, 0, 0, 0};
    auto& context = *dx11_.context;
    context.ClearRenderTargetView(target, blank);
    context.ClearDepthStencilView(depthView_.get(), D3D11_CLEAR_DEPTH | D3D11_CLEAR_STENCIL, 1.0F, 0);
    context.OMSetRenderTargets(1, &target, depthView_.get());
}

HRESULT D3D11AnimationRenderer::draw(const RenderObject& object) {
    if (frameCount_ == 0) {
        startNanoseconds_ = nowNanoseconds();
    }
    ++frameCount_;
    drawRenderObject(*dx11_.context, object);
    return dx11_.device->GetDeviceRemovedReason();
}

bool D3D11AnimationRenderer::readBack(ImageReadBack& out) {
    return readBackPicture(dx11_.context, *compareTexture_, stagingTexture_, out);
}

float D3D11AnimationRenderer::framesPerSecond() { return rateSince(startNanoseconds_, frameCount_); }

} // namespace vexil::module::video_card
