#include "platform/linux/overlay_painter/text_pipeline.h"

#include "platform/linux/overlay_painter/overlay_text_shaders.h"

#include <cmath>
#include <cstring>
#include <stdexcept>

namespace vexil::platform {

namespace {

/// As the shaders see it.
struct Constants {
    float left, top, width, height;
    OverlayColor color;
    float targetWidth, targetHeight;
    float padding[2];
};
static_assert(sizeof(Constants) == 48);

constexpr UINT corners = 4;

template <typename T>
Owned<T> take(T* object) {
    return object == nullptr ? Owned<T>() : Owned<T>(object, [](T* owned) { owned->Release(); });
}

/// Calls `create(T**)`, and takes over what it made.
template <typename T, typename Create>
HRESULT make(Owned<T>& owner, Create create) {
    T* object = nullptr;
    const HRESULT result = create(&object);
    if (SUCCEEDED(result)) {
        owner = take(object);
    }
    return result;
}

void orThrow(HRESULT result) {
    if (FAILED(result)) {
        throw std::runtime_error("Failed to create overlay");
    }
}

template <typename T>
Owned<T> as(IUnknown& object) {
    Owned<T> other;
    orThrow(make(other,
                 [&](T** out) { return object.QueryInterface(__uuidof(T), reinterpret_cast<void**>(out)); }));
    return other;
}

Owned<ID3D11Device1> deviceOf(ID3D11DeviceContext1& context) {
    ID3D11Device* device = nullptr;
    context.GetDevice(&device);
    return as<ID3D11Device1>(*take(device));
}

} // namespace

TextPipeline::TextPipeline(ID3D11DeviceContext& context)
    : context_(as<ID3D11DeviceContext1>(context)), device_(deviceOf(*context_)) {
    static constexpr D3D_FEATURE_LEVEL level = D3D_FEATURE_LEVEL_11_0;
    orThrow(make(own_, [&](auto out) {
        return device_->CreateDeviceContextState(0, &level, 1, D3D11_SDK_VERSION, __uuidof(ID3D11Device1),
                                                 nullptr, out);
    }));
    createShaders();
    createStates();
    begin({});
    bind();
    end();
}

void TextPipeline::createShaders() {
    const auto vertexCode = shaders::overlayTextVertexShader;
    const auto pixelCode = shaders::overlayTextPixelShader;
    orThrow(make(vertexShader_, [&](auto out) {
        return device_->CreateVertexShader(vertexCode.data(), vertexCode.size(), nullptr, out);
    }));
    orThrow(make(pixelShader_, [&](auto out) {
        return device_->CreatePixelShader(pixelCode.data(), pixelCode.size(), nullptr, out);
    }));
}

void TextPipeline::createStates() {
    D3D11_BUFFER_DESC buffer{};
    buffer.ByteWidth = sizeof(Constants);
    buffer.Usage = D3D11_USAGE_DYNAMIC;
    buffer.BindFlags = D3D11_BIND_CONSTANT_BUFFER;
    buffer.CPUAccessFlags = D3D11_CPU_ACCESS_WRITE;
    orThrow(make(constants_, [&](auto out) { return device_->CreateBuffer(&buffer, nullptr, out); }));

    // The target's own alpha stays as it is.
    D3D11_BLEND_DESC blend{};
    auto& target = blend.RenderTarget[0];
    target.BlendEnable = TRUE;
    target.SrcBlend = D3D11_BLEND_SRC_ALPHA;
    target.DestBlend = D3D11_BLEND_INV_SRC_ALPHA;
    target.BlendOp = D3D11_BLEND_OP_ADD;
    target.SrcBlendAlpha = D3D11_BLEND_ZERO;
    target.DestBlendAlpha = D3D11_BLEND_ONE;
    target.BlendOpAlpha = D3D11_BLEND_OP_ADD;
    target.RenderTargetWriteMask = D3D11_COLOR_WRITE_ENABLE_ALL;
    orThrow(make(blendState_, [&](auto out) { return device_->CreateBlendState(&blend, out); }));
}

void TextPipeline::bind() {
    auto* const buffer = constants_.get();
    context_->IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP);
    context_->VSSetShader(vertexShader_.get(), nullptr, 0);
    context_->VSSetConstantBuffers(0, 1, &buffer);
    context_->PSSetShader(pixelShader_.get(), nullptr, 0);
    context_->PSSetConstantBuffers(0, 1, &buffer);
    context_->OMSetBlendState(blendState_.get(), nullptr, 0xFFFFFFFF);
}

TextTarget TextPipeline::createTarget(IDXGISurface& surface) {
    const auto texture = as<ID3D11Texture2D>(surface);
    D3D11_TEXTURE2D_DESC description{};
    texture->GetDesc(&description);
    TextTarget target{nullptr, description.Width, description.Height};
    orThrow(make(target.view,
                 [&](auto out) { return device_->CreateRenderTargetView(texture.get(), nullptr, out); }));
    return target;
}

bool TextPipeline::createTexture(const TextImage& image, TextTexture& texture) {
    texture = {nullptr, image.width, image.height};
    if (image.coverage.empty()) {
        return true;
    }
    D3D11_TEXTURE2D_DESC description{};
    description.Width = image.width;
    description.Height = image.height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = DXGI_FORMAT_R8_UNORM;
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_IMMUTABLE;
    description.BindFlags = D3D11_BIND_SHADER_RESOURCE;
    const D3D11_SUBRESOURCE_DATA content{image.coverage.data(), image.width, 0};
    Owned<ID3D11Texture2D> resource;
    return SUCCEEDED(make(resource,
                          [&](auto out) { return device_->CreateTexture2D(&description, &content, out); })) &&
           SUCCEEDED(make(texture.view, [&](auto out) {
               return device_->CreateShaderResourceView(resource.get(), nullptr, out);
           }));
}

void TextPipeline::begin(const TextTarget& target) {
    ID3DDeviceContextState* before = nullptr;
    context_->SwapDeviceContextState(own_.get(), &before);
    renderers_ = take(before);
    auto* const view = target.view.get();
    const D3D11_VIEWPORT viewport{0, 0, static_cast<float>(target.width), static_cast<float>(target.height),
                                  0, 1};
    context_->OMSetRenderTargets(1, &view, nullptr);
    context_->RSSetViewports(1, &viewport);
}

HRESULT TextPipeline::draw(const TextTarget& target, const TextTexture& texture, float x, float y,
                           const OverlayColor& color) {
    if (!texture.view) {
        return S_OK;
    }
    // On whole pixels, so that the letters stay as sharp as they were painted.
    const Constants constants{std::floor(x),
                              std::floor(y),
                              static_cast<float>(texture.width),
                              static_cast<float>(texture.height),
                              color,
                              static_cast<float>(target.width),
                              static_cast<float>(target.height),
                              {}};
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (const HRESULT result = context_->Map(constants_.get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped);
        FAILED(result)) {
        return result;
    }
    std::memcpy(mapped.pData, &constants, sizeof constants);
    context_->Unmap(constants_.get(), 0);
    auto* const view = texture.view.get();
    context_->PSSetShaderResources(0, 1, &view);
    context_->Draw(corners, 0);
    return S_OK;
}

void TextPipeline::end() {
    // What is bound is kept alive by the state; the picture must not be.
    ID3D11RenderTargetView* const noTarget = nullptr;
    ID3D11ShaderResourceView* const noText = nullptr;
    context_->OMSetRenderTargets(1, &noTarget, nullptr);
    context_->PSSetShaderResources(0, 1, &noText);
    context_->SwapDeviceContextState(renderers_.get(), nullptr);
    renderers_.reset();
}

} // namespace vexil::platform
