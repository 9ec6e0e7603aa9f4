#pragma once

#include "simulated/direct3d/call_log.h"

#include <d3d11.h>

#include <cstddef>
#include <string>
#include <type_traits>

namespace vexil::simulated {

/// Writes one call for the log, argument by argument in their order. A count is remembered for the arrays
/// behind it, and what is in front of its count waits for it.
class CallText {
public:
    CallText(CallLog& log, const char* call) : log_(log), text_(std::string(call) + "(") {}

    template <typename... Arguments>
    void arguments(const Arguments&... arguments) {
        (argument(arguments), ...);
    }
    /// To be called once; names what the call has made.
    [[nodiscard]] std::string finish(HRESULT result);
    [[nodiscard]] std::string finish() { return text_ + ")"; }

private:
    template <typename T>
    void argument(T value) requires std::is_integral_v<T> || std::is_enum_v<T> {
        if constexpr (std::is_same_v<T, SIZE_T>) {
            size(value);
        } else {
            number(static_cast<long long>(value));
        }
    }
    /// An object that the call uses.
    template <typename T>
    void argument(T* object) requires std::is_base_of_v<IUnknown, T> {
        item(log_.nameOf(static_cast<const void*>(object)));
    }
    /// Objects that the call uses.
    template <typename T>
    void argument(T* const* objects) requires std::is_base_of_v<IUnknown, T> {
        list(objects, [this](T* object) { return log_.nameOf(object); });
    }
    /// An object that the call makes.
    template <typename T>
    void argument(T** object) requires std::is_base_of_v<IUnknown, T> {
        made_ = reinterpret_cast<void* const*>(object);
        madeKind_ = kindOf(static_cast<T*>(nullptr));
    }
    void argument(float value);
    void argument(const GUID&) { item("id"); }
    void argument(const UINT* values);
    void argument(const FLOAT* color);
    void argument(const void* bytes);
    void argument(const D3D11_BOX* box);
    void argument(const D3D11_VIEWPORT* viewports);
    void argument(const D3D11_BUFFER_DESC* desc);
    void argument(const D3D11_TEXTURE2D_DESC* desc);
    void argument(const D3D11_SUBRESOURCE_DATA* data);
    void argument(const D3D11_INPUT_ELEMENT_DESC* elements);
    void argument(const D3D11_SHADER_RESOURCE_VIEW_DESC* desc);
    void argument(const D3D11_UNORDERED_ACCESS_VIEW_DESC* desc);
    void argument(const D3D11_RENDER_TARGET_VIEW_DESC* desc);
    void argument(const D3D11_DEPTH_STENCIL_VIEW_DESC* desc);
    void argument(const D3D11_DEPTH_STENCIL_DESC* desc);
    void argument(const D3D11_SAMPLER_DESC* desc);
    void argument(const D3D11_RASTERIZER_DESC* desc);
    void argument(const DXGI_SWAP_CHAIN_DESC* desc);
    /// What the call fills in.
    void argument(UINT*) {}
    void argument(void**) {}
    void argument(D3D11_MAPPED_SUBRESOURCE*) {}
    /// What no order of calls is told by.
    template <typename T>
    void argument(const T* other) requires(!std::is_base_of_v<IUnknown, T>) {
        item(other == nullptr ? "null" : "*");
    }

    static const char* kindOf(ID3D11Texture2D*) { return "texture"; }
    static const char* kindOf(ID3D11Buffer*) { return "buffer"; }
    static const char* kindOf(ID3D11ShaderResourceView*) { return "resourceView"; }
    static const char* kindOf(ID3D11UnorderedAccessView*) { return "accessView"; }
    static const char* kindOf(ID3D11RenderTargetView*) { return "targetView"; }
    static const char* kindOf(ID3D11DepthStencilView*) { return "depthView"; }
    static const char* kindOf(ID3D11VertexShader*) { return "vertexShader"; }
    static const char* kindOf(ID3D11PixelShader*) { return "pixelShader"; }
    static const char* kindOf(ID3D11ComputeShader*) { return "computeShader"; }
    static const char* kindOf(ID3D11InputLayout*) { return "inputLayout"; }
    static const char* kindOf(ID3D11SamplerState*) { return "sampler"; }
    static const char* kindOf(ID3D11DepthStencilState*) { return "depthState"; }
    static const char* kindOf(ID3D11RasterizerState*) { return "rasterizerState"; }
    static const char* kindOf(IUnknown*) { return "object"; }

    template <typename T, typename Write>
    void list(const T* values, Write write) {
        if (values == nullptr) {
            item("null");
            return;
        }
        std::string text;
        for (std::size_t i = 0; i < count_; ++i) {
            text += (i == 0 ? "" : ", ") + write(values[i]);
        }
        item("[" + text + "]");
    }
    void number(long long value);
    void size(std::size_t value);
    void item(const std::string& text);

    CallLog& log_;
    std::string text_;
    bool first_ = true;
    std::size_t count_ = 0;
    std::size_t contentBytes_ =
        0; ///< of the resource that the call describes, 0 for a texture's single slice
    std::size_t contentRows_ = 0;
    const void* waitingBytes_ = nullptr;
    const D3D11_INPUT_ELEMENT_DESC* waitingElements_ = nullptr;
    void* const* made_ = nullptr;
    const char* madeKind_ = nullptr;
};

} // namespace vexil::simulated
