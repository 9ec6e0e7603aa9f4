#include "module/video_card/stress/rendering/render_resources.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/mapped_subresource.h"

#include <chrono>
#include <limits>
#include <stdexcept>
#include <utility>

namespace vexil::module::video_card {

namespace {

/// E_HANDLE of Windows, which not every header has.
constexpr auto invalidHandle = static_cast<HRESULT>(0x80070006);

} // namespace

void orThrow(HRESULT result, const char* text) {
    if (FAILED(result)) {
        throw std::runtime_error(text);
    }
}

HRESULT createConstantBuffer(ID3D11Device& device, std::span<const std::byte> content,
                             ComShared<ID3D11Buffer>& buffer) {
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = static_cast<UINT>(content.size());
    description.Usage = D3D11_USAGE_DYNAMIC;
    description.BindFlags = D3D11_BIND_CONSTANT_BUFFER;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_WRITE;
    const D3D11_SUBRESOURCE_DATA data{content.data(), 0, 0};
    return createCom(buffer, [&](auto out) { return device.CreateBuffer(&description, &data, out); });
}

HRESULT createRasterizer(ID3D11Device& device, ID3D11DeviceContext& context, D3D11_FILL_MODE fill,
                         bool frontCounterClockwise, ComShared<ID3D11RasterizerState>& state) {
    D3D11_RASTERIZER_DESC description{};
    description.FillMode = fill;
    description.CullMode = D3D11_CULL_BACK;
    description.FrontCounterClockwise = frontCounterClockwise ? TRUE : FALSE;
    description.DepthClipEnable = TRUE;
    const HRESULT result =
        createCom(state, [&](auto out) { return device.CreateRasterizerState(&description, out); });
    if (SUCCEEDED(result)) {
        context.RSSetState(state.get());
    }
    return result;
}

HRESULT createShaders(ID3D11Device& device, std::span<const std::byte> vertexCode,
                      std::span<const std::byte> pixelCode,
                      std::span<const D3D11_INPUT_ELEMENT_DESC> elements, RenderObject& object) {
    const HRESULT result =
        createShaderPair(device, vertexCode, pixelCode, object.vertexShader, object.pixelShader);
    if (FAILED(result)) {
        return result;
    }
    if (!object.vertexShader || !object.pixelShader) {
        return invalidHandle;
    }
    return createInputLayout(device, elements, vertexCode, object.inputLayout);
}

bool readBackPicture(const ComShared<ID3D11DeviceContext>& context, ID3D11Texture2D& picture,
                     const ComShared<ID3D11Texture2D>& staging, ImageReadBack& out) {
    out = {};
    context->CopyResource(staging.get(), &picture);
    auto mapped = mapSubresource(context, staging, 0, D3D11_MAP_READ);
    if (mapped->pData == nullptr) {
        return false;
    }
    const auto description = descriptionOf(picture);
    out = {std::move(mapped), std::uint64_t{description.Width} * description.Height * renderPixelBytes,
           description.Width, description.Height};
    return true;
}

void setWholeViewport(ID3D11DeviceContext& context, std::uint32_t width, std::uint32_t height) {
    const D3D11_VIEWPORT viewport{0, 0, static_cast<float>(width), static_cast<float>(height), 0, 1};
    context.RSSetViewports(1, &viewport);
}

std::int64_t nowNanoseconds() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

float rateSince(std::int64_t startNanoseconds, std::uint64_t count) {
    static_assert(std::numeric_limits<float>::is_iec559, "a division by no time gives infinity or NaN");
    const std::int64_t milliseconds =
        startNanoseconds == 0 ? 0 : (nowNanoseconds() - startNanoseconds) / 1000000;
    return static_cast<float>(count) / (static_cast<float>(milliseconds) / 1000.0F);
}

} // namespace vexil::module::video_card
