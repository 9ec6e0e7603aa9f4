#include "module/video_card/stress/rendering/d3d11_offscreen_renderer.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/depth_stencil.h"
#include "module/video_card/stress/rendering/render_resources.h"
#include "utils/mersenne_twister.h"

#include <cstring>
#include <iterator>
#include <span>
#include <utility>

namespace vexil::module::video_card {

namespace {

constexpr float animationStep = 0.05F;
constexpr float sphereScale = 50;
constexpr float fieldOfView = 2 * 0.3926991F; // 45 degrees
constexpr float nearPlane = 50;
constexpr float farPlane = 20000;
constexpr std::uint32_t patternSeed = 1611516670; // 0x600DCAFE
constexpr std::uint32_t patternOpaqueBits = 255;

} // namespace

D3D11OffscreenRenderer::D3D11OffscreenRenderer(Dx11Context dx11, std::uint32_t width, std::uint32_t height,
                                               bool wireframe)
    : dx11_(std::move(dx11)), width_(width), height_(height), wireframe_(wireframe) {
    createTargets();
    createDepth();
    createRasterizerState();
    createMatrices();
    createPattern();
    createStaging();
    setWholeViewport(*dx11_.context, width_, height_);
}

void D3D11OffscreenRenderer::createTargets() {
    static constexpr const char* failure = "Failed to create render target";
    auto& device = *dx11_.device;
    const auto description = plainTexture(width_, height_, DXGI_FORMAT_R8G8B8A8_UNORM,
                                          D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE);
    const std::vector<std::uint32_t> blank(std::size_t{width_} * height_);
    const D3D11_SUBRESOURCE_DATA content{blank.data(), width_ * renderPixelBytes, 0};
    for (auto& target : targets_) {
        orThrow(createTexture(device, description, &content, target.texture), failure);
        orThrow(createTargetView(device, *target.texture, target.renderTargetView), failure);
        orThrow(createResourceView(device, *target.texture, 1, target.shaderResourceView), failure);
    }
}

void D3D11OffscreenRenderer::createDepth() {
    static constexpr auto state = depthStencilDescription();
    const auto description = plainTexture(width_, height_, depthFormat, D3D11_BIND_DEPTH_STENCIL);
    orThrow(createDepthTarget(*dx11_.device, *dx11_.context, description, state,
                              {depthTexture_, depthState_, depthView_}),
            "Failed to create depth buffer");
}

void D3D11OffscreenRenderer::createRasterizerState() {
    const auto fill = wireframe_ ? D3D11_FILL_WIREFRAME : D3D11_FILL_SOLID;
    orThrow(createRasterizer(*dx11_.device, *dx11_.context, fill, true, rasterizerState_),
            "Failed to create rasterizer state");
}

void D3D11OffscreenRenderer::createMatrices() {
    const float aspect = static_cast<float>(width_) / static_cast<float>(height_);
    matrices_ = {identityMatrix(), lookToMatrix({0, 0, -50}, {0, 0, 50}, {0, 1, 0}),
                 perspectiveMatrix(fieldOfView, aspect, nearPlane, farPlane)};
    orThrow(createConstantBuffer(*dx11_.device, std::as_bytes(std::span(&matrices_, 1)), constantBuffer_),
            "Failed to create constant buffer");
}

void D3D11OffscreenRenderer::createPattern() {
    static constexpr const char* failure = "Failed to create pattern";
    auto& device = *dx11_.device;
    std::vector<std::uint32_t> pixels(std::size_t{width_} * height_);
    utils::MersenneTwister(patternSeed).fill(pixels);
    for (auto& pixel : pixels) {
        pixel |= patternOpaqueBits;
    }
    auto description = descriptionOf(*targets_.front().texture);
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_IMMUTABLE;
    description.BindFlags = D3D11_BIND_SHADER_RESOURCE;
    const D3D11_SUBRESOURCE_DATA content{pixels.data(), width_ * renderPixelBytes, 0};
    orThrow(createTexture(device, description, &content, patternTexture_), failure);
    orThrow(
        createResourceView(device, *patternTexture_, descriptionOf(*patternTexture_).MipLevels, patternView_),
        failure);

    D3D11_SAMPLER_DESC sampler{};
    sampler.Filter = D3D11_FILTER_MIN_MAG_MIP_POINT;
    sampler.AddressU = D3D11_TEXTURE_ADDRESS_WRAP;
    sampler.AddressV = D3D11_TEXTURE_ADDRESS_WRAP;
    sampler.AddressW = D3D11_TEXTURE_ADDRESS_WRAP;
    sampler.MaxAnisotropy = 1;
    sampler.ComparisonFunc = D3D11_COMPARISON_ALWAYS;
    sampler.MinLOD = -D3D11_FLOAT32_MAX;
    sampler.MaxLOD = D3D11_FLOAT32_MAX;
    orThrow(createCom(patternSampler_, [&](auto out) { return device.CreateSamplerState(&sampler, out); }),
            failure);
}

void D3D11OffscreenRenderer::createStaging() {
    orThrow(
        createTexture(*dx11_.device, stagingDescription(*targets_.front().texture), nullptr, stagingTexture_),
        "Failed to create staging texture");
}

void D3D11OffscreenRenderer::setObjects(std::vector<RenderObject> objects) {
    objects_.insert(objects_.end(), std::make_move_iterator(objects.begin()),
                    std::make_move_iterator(objects.end()));
}

void D3D11OffscreenRenderer::advanceTime() { time_ += animationStep; }

std::size_t D3D11OffscreenRenderer::previousIndex() const {
    return frameIndex_ == 0 ? targets_.size() - 1 : static_cast<std::size_t>(frameIndex_) - 1;
}

bool D3D11OffscreenRenderer::renderFrame() {
    if (frames_ == 0) {
        startNanoseconds_ = nowNanoseconds();
    }
    ++frames_;

    auto& context = *dx11_.context;
    ID3D11RenderTargetView* const noTarget = nullptr;
    ID3D11ShaderResourceView* const noResource = nullptr;
    context.OMSetRenderTargets(1, &noTarget, nullptr);
    context.PSSetShaderResources(0, 1, &noResource);

    auto* const pattern = patternView_.get();
    auto* const sampler = patternSampler_.get();
    if (pattern == nullptr || sampler == nullptr) {
        return false;
    }
    context.PSSetShaderResources(1, 1, &pattern);
    context.PSSetSamplers(0, 1, &sampler);

    const auto& target = targets_[static_cast<std::size_t>(frameIndex_)];
    auto* const targetView = target.renderTargetView.get();
    auto* const previous = targets_[previousIndex()].shaderResourceView.get();
    context.OMSetRenderTargets(1, &targetView, depthView_.get());
    context.PSSetShaderResources(0, 1, &previous);

    const HRESULT result = drawScene(target, time_);
    frameIndex_ = (frameIndex_ + 1) % targets_.size();
    return SUCCEEDED(result);
}

HRESULT D3D11OffscreenRenderer::drawScene(const OffscreenTarget& target, float angle) {
    static constexpr float blank[] = {0, 0, 0, 0};
    auto& context = *dx11_.context;
    context.ClearRenderTargetView(target.renderTargetView.get(), blank);
    context.ClearDepthStencilView(depthView_.get(), D3D11_CLEAR_DEPTH | D3D11_CLEAR_STENCIL, 1.0F, 0);

    matrices_.model = multiply(rotationYMatrix(angle), scalingMatrix(sphereScale));
    ID3D11Buffer* const noBuffer = nullptr;
    context.VSSetConstantBuffers(0, 1, &noBuffer);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (FAILED(context.Map(constantBuffer_.get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped))) {
        // The frame is left empty and the run goes on: only the card's health decides on a frame.
        return S_OK;
    }
    std::memcpy(mapped.pData, &matrices_, sizeof matrices_);
    context.Unmap(constantBuffer_.get(), 0);
    auto* const buffer = constantBuffer_.get();
    context.VSSetConstantBuffers(0, 1, &buffer);

    for (const auto& object : objects_) {
        drawRenderObject(context, object);
    }
    context.Flush();
    return dx11_.device->GetDeviceRemovedReason();
}

bool D3D11OffscreenRenderer::readBack(ImageReadBack& out) {
    return readBackPicture(dx11_.context, *targets_[previousIndex()].texture, stagingTexture_, out);
}

float D3D11OffscreenRenderer::framesPerSecond() { return rateSince(startNanoseconds_, frames_); }

std::shared_ptr<D3D11OffscreenRenderer> createOffscreenRenderer(const Dx11Context& dx11, std::uint32_t width,
                                                                std::uint32_t height, bool wireframe) {
    return std::make_shared<D3D11OffscreenRenderer>(dx11, width, height, wireframe);
}

} // namespace vexil::module::video_card
