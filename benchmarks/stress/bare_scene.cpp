#include "stress/bare_scene.h"

#include "module/video_card/direct3d/mapped_subresource.h"
#include "module/video_card/stress/rendering/matrix.h"
#include "module/video_card/stress/rendering/render_resources.h"

#include <cstring>
#include <span>

namespace vexil::benchmarks {

using namespace module::video_card;

namespace {

constexpr const char* failure = "the card refuses an object of the scene";

RenderObject objectOf(const Created<RenderObject>& created) {
    orThrow(created.result, failure);
    return created.value;
}

} // namespace

BareScene::BareScene(const Dx11Context& dx11, std::uint32_t width, std::uint32_t height)
    : dx11_(dx11), width_(width), height_(height), scene_(objectOf(createSceneObject(width, height, dx11))),
      compare_(objectOf(createCompareObject(width, height, dx11))) {
    auto& device = *dx11_.device;
    const auto description = plainTexture(width, height, DXGI_FORMAT_B8G8R8A8_UNORM,
                                          D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE);
    for (auto& target : targets_) {
        orThrow(createTexture(device, description, nullptr, target.texture), failure);
        orThrow(createTargetView(device, *target.texture, target.view), failure);
        orThrow(createResourceView(device, *target.texture, 1, target.resourceView), failure);
    }
    orThrow(createTexture(device, stagingDescription(*targets_[0].texture), nullptr, staging_), failure);
    const std::array matrices = {
        identityMatrix(), lookToMatrix({0, 0, -10}, {0, 0, 10}, {0, 1, 0}),
        orthographicMatrix(static_cast<float>(width), static_cast<float>(height), 0.1F, 1000)};
    orThrow(createConstantBuffer(device, std::as_bytes(std::span(matrices)), matrices_), failure);
    const std::array<float, 4> resolution{};
    orThrow(createConstantBuffer(device, std::as_bytes(std::span(resolution)), resolution_), failure);
    setWholeViewport(*dx11_.context, width, height);
}

void BareScene::bindConstants(float seconds) {
    auto& context = *dx11_.context;
    const std::array<float, 4> resolution = {static_cast<float>(width_), static_cast<float>(height_), seconds,
                                             0};
    D3D11_MAPPED_SUBRESOURCE mapped{};
    orThrow(context.Map(resolution_.get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped), failure);
    std::memcpy(mapped.pData, resolution.data(), sizeof resolution);
    context.Unmap(resolution_.get(), 0);
    auto* const matrices = matrices_.get();
    auto* const constants = resolution_.get();
    context.VSSetConstantBuffers(0, 1, &matrices);
    context.PSSetConstantBuffers(0, 1, &constants);
}

void BareScene::draw(const Target& target, const RenderObject& object) {
    auto* const view = target.view.get();
    dx11_.context->OMSetRenderTargets(1, &view, nullptr);
    drawRenderObject(*dx11_.context, object);
}

void BareScene::drawScene(float seconds) {
    bindConstants(seconds);
    draw(targets_[0], scene_);
    dx11_.context->Flush();
}

void BareScene::drawFrame(float seconds) {
    bindConstants(seconds);
    draw(targets_[0], scene_);
    draw(targets_[1], scene_);
    const std::array pictures = {targets_[0].resourceView.get(), targets_[1].resourceView.get()};
    auto* const comparison = targets_[2].view.get();
    dx11_.context->OMSetRenderTargets(1, &comparison, nullptr);
    dx11_.context->PSSetShaderResources(0, 2, pictures.data());
    drawRenderObject(*dx11_.context, compare_);
    dx11_.context->Flush();
}

std::vector<std::byte> BareScene::picture() {
    dx11_.context->CopyResource(staging_.get(), targets_[0].texture.get());
    const auto mapped = mapSubresource(dx11_.context, staging_, 0, D3D11_MAP_READ);
    orThrow(mapped->pData == nullptr ? E_FAIL : S_OK, "the picture cannot be read back");
    const std::size_t rowBytes = std::size_t{width_} * renderPixelBytes;
    std::vector<std::byte> pixels(rowBytes * height_);
    for (std::size_t row = 0; row < height_; ++row) {
        std::memcpy(pixels.data() + row * rowBytes,
                    static_cast<const std::byte*>(mapped->pData) + row * mapped->RowPitch, rowBytes);
    }
    return pixels;
}

} // namespace vexil::benchmarks
