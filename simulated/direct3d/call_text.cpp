#include "simulated/direct3d/call_text.h"

#include <array>
#include <cstdio>

namespace vexil::simulated {

namespace {

std::string decimal(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.9g", value);
    return text.data();
}

/// The fields of a record in their order, in braces.
template <typename... Fields>
std::string record(const Fields&... fields) {
    std::string text;
    ((text += (text.empty() ? "" : ", ") + decimal(static_cast<double>(fields))), ...);
    return "{" + text + "}";
}

std::string stencilText(const D3D11_DEPTH_STENCILOP_DESC& face) {
    return record(face.StencilFailOp, face.StencilDepthFailOp, face.StencilPassOp, face.StencilFunc);
}

} // namespace

void CallText::item(const std::string& text) {
    text_ += (first_ ? "" : ", ") + text;
    first_ = false;
}

void CallText::number(long long value) {
    count_ = static_cast<std::size_t>(value);
    if (waitingElements_ != nullptr) {
        list(waitingElements_, [](const D3D11_INPUT_ELEMENT_DESC& element) {
            return "{" + std::string(element.SemanticName) + " " +
                   record(element.SemanticIndex, element.Format, element.InputSlot, element.AlignedByteOffset,
                          element.InputSlotClass, element.InstanceDataStepRate) +
                   "}";
        });
        waitingElements_ = nullptr;
        return;
    }
    item(std::to_string(value));
}

void CallText::size(std::size_t value) {
    item(waitingBytes_ == nullptr ? std::to_string(value)
                                  : contentMark({static_cast<const std::byte*>(waitingBytes_), value}));
    waitingBytes_ = nullptr;
}

void CallText::argument(float value) { item(decimal(value)); }

void CallText::argument(const UINT* values) {
    list(values, [](UINT value) { return std::to_string(value); });
}

void CallText::argument(const FLOAT* color) {
    count_ = 4;
    list(color, [](FLOAT value) { return decimal(value); });
}

void CallText::argument(const void* bytes) { waitingBytes_ = bytes; }

void CallText::argument(const D3D11_BOX* box) {
    item(box == nullptr ? "null"
                        : record(box->left, box->top, box->front, box->right, box->bottom, box->back));
}

void CallText::argument(const D3D11_VIEWPORT* viewports) {
    list(viewports, [](const D3D11_VIEWPORT& view) {
        return record(view.TopLeftX, view.TopLeftY, view.Width, view.Height, view.MinDepth, view.MaxDepth);
    });
}

void CallText::argument(const D3D11_BUFFER_DESC* desc) {
    contentBytes_ = desc->ByteWidth;
    item(record(desc->ByteWidth, desc->Usage, desc->BindFlags, desc->CPUAccessFlags, desc->MiscFlags,
                desc->StructureByteStride));
}

void CallText::argument(const D3D11_TEXTURE2D_DESC* desc) {
    contentRows_ = desc->Height;
    item(record(desc->Width, desc->Height, desc->MipLevels, desc->ArraySize, desc->Format,
                desc->SampleDesc.Count, desc->SampleDesc.Quality, desc->Usage, desc->BindFlags,
                desc->CPUAccessFlags, desc->MiscFlags));
}

void CallText::argument(const D3D11_SUBRESOURCE_DATA* data) {
    if (data == nullptr) {
        item("null");
        return;
    }
    const auto bytes = contentBytes_ != 0 ? contentBytes_ : data->SysMemPitch * contentRows_;
    item(contentMark({static_cast<const std::byte*>(data->pSysMem), bytes}));
}

void CallText::argument(const D3D11_INPUT_ELEMENT_DESC* elements) { waitingElements_ = elements; }

void CallText::argument(const D3D11_SHADER_RESOURCE_VIEW_DESC* desc) {
    if (desc->ViewDimension == D3D11_SRV_DIMENSION_BUFFEREX) {
        item(record(desc->Format, desc->ViewDimension, desc->BufferEx.FirstElement,
                    desc->BufferEx.NumElements, desc->BufferEx.Flags));
        return;
    }
    item(record(desc->Format, desc->ViewDimension, desc->Texture2D.MostDetailedMip,
                desc->Texture2D.MipLevels));
}

void CallText::argument(const D3D11_UNORDERED_ACCESS_VIEW_DESC* desc) {
    item(record(desc->Format, desc->ViewDimension, desc->Buffer.FirstElement, desc->Buffer.NumElements,
                desc->Buffer.Flags));
}

void CallText::argument(const D3D11_RENDER_TARGET_VIEW_DESC* desc) {
    item(record(desc->Format, desc->ViewDimension, desc->Texture2D.MipSlice));
}

void CallText::argument(const D3D11_DEPTH_STENCIL_VIEW_DESC* desc) {
    if (desc->ViewDimension == D3D11_DSV_DIMENSION_TEXTURE2DMS) {
        // A view of this dimension has no slices to choose; whoever fills them in all the same is seen.
        item(record(desc->Format, desc->ViewDimension, desc->Flags, desc->Texture2DMSArray.FirstArraySlice,
                    desc->Texture2DMSArray.ArraySize));
        return;
    }
    item(record(desc->Format, desc->ViewDimension, desc->Flags, desc->Texture2D.MipSlice));
}

void CallText::argument(const D3D11_DEPTH_STENCIL_DESC* desc) {
    item("{" +
         record(desc->DepthEnable, desc->DepthWriteMask, desc->DepthFunc, desc->StencilEnable,
                desc->StencilReadMask, desc->StencilWriteMask) +
         ", " + stencilText(desc->FrontFace) + ", " + stencilText(desc->BackFace) + "}");
}

void CallText::argument(const D3D11_SAMPLER_DESC* desc) {
    item(record(desc->Filter, desc->AddressU, desc->AddressV, desc->AddressW, desc->MipLODBias,
                desc->MaxAnisotropy, desc->ComparisonFunc, desc->BorderColor[0], desc->BorderColor[1],
                desc->BorderColor[2], desc->BorderColor[3], desc->MinLOD, desc->MaxLOD));
}

void CallText::argument(const D3D11_RASTERIZER_DESC* desc) {
    item(record(desc->FillMode, desc->CullMode, desc->FrontCounterClockwise, desc->DepthBias,
                desc->DepthBiasClamp, desc->SlopeScaledDepthBias, desc->DepthClipEnable, desc->ScissorEnable,
                desc->MultisampleEnable, desc->AntialiasedLineEnable));
}

void CallText::argument(const DXGI_SWAP_CHAIN_DESC* desc) {
    const auto& mode = desc->BufferDesc;
    item(record(mode.Width, mode.Height, mode.RefreshRate.Numerator, mode.RefreshRate.Denominator,
                mode.Format, mode.ScanlineOrdering, mode.Scaling, desc->SampleDesc.Count,
                desc->SampleDesc.Quality, desc->BufferUsage, desc->BufferCount, desc->Windowed,
                desc->SwapEffect, desc->Flags));
}

std::string CallText::finish(HRESULT result) {
    text_ += ")";
    if (FAILED(result)) {
        std::array<char, 16> code{};
        std::snprintf(code.data(), code.size(), " = 0x%08X", static_cast<unsigned>(result));
        return text_ + code.data();
    }
    if (made_ != nullptr && *made_ != nullptr) {
        text_ += " = " + log_.nameNew(*made_, madeKind_);
    }
    return text_;
}

} // namespace vexil::simulated
