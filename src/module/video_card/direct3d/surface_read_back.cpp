#include "module/video_card/direct3d/surface_read_back.h"

#include "module/video_card/direct3d/resource_creation.h"

#include <cstddef>
#include <cstring>

namespace vexil::module::video_card {

namespace {

constexpr std::size_t pixelBytes = 4;

/// E_NOINTERFACE for a format that the card cannot resolve.
HRESULT checkResolveSupport(ID3D11Device& device, DXGI_FORMAT format) {
    UINT support = 0;
    const HRESULT result = device.CheckFormatSupport(format, &support);
    if (FAILED(result)) {
        return result;
    }
    return (support & D3D11_FORMAT_SUPPORT_MULTISAMPLE_RESOLVE) == 0 ? E_NOINTERFACE : S_OK;
}

void resolveAll(ID3D11DeviceContext& context, ID3D11Texture2D& target, ID3D11Texture2D& source,
                const D3D11_TEXTURE2D_DESC& description) {
    for (UINT slice = 0; slice < description.ArraySize; ++slice) {
        for (UINT mip = 0; mip < description.MipLevels; ++mip) {
            const UINT index = description.MipLevels * slice + mip;
            context.ResolveSubresource(&target, index, &source, index, description.Format);
        }
    }
}

void copyRows(const D3D11_MAPPED_SUBRESOURCE& mapped, const D3D11_TEXTURE2D_DESC& description,
              std::span<std::uint8_t> image) {
    const std::size_t rowBytes = description.Width * pixelBytes;
    const auto* row = static_cast<const std::uint8_t*>(mapped.pData);
    for (std::size_t y = 0; y < description.Height; ++y, row += mapped.RowPitch) {
        std::memcpy(image.data() + y * rowBytes, row, rowBytes);
    }
}

} // namespace

HRESULT readBackSurface(ID3D11Device& device, ID3D11DeviceContext& context, ID3D11Texture2D& texture,
                        std::span<std::uint8_t> image) {
    auto description = descriptionOf(texture);
    description.SampleDesc = {1, 0};
    ComShared<ID3D11Texture2D> temporary;
    if (const HRESULT result = createTexture(device, description, nullptr, temporary); FAILED(result)) {
        return result;
    }
    if (const HRESULT result = checkResolveSupport(device, description.Format); FAILED(result)) {
        return result;
    }
    resolveAll(context, *temporary, texture, description);

    ComShared<ID3D11Texture2D> staging;
    const HRESULT created = createTexture(device, stagingDescription(texture), nullptr, staging);
    if (FAILED(created)) {
        return created;
    }
    // The surface itself and not what was resolved: the comparison is about the memory under test.
    context.CopyResource(staging.get(), &texture);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (const HRESULT result = context.Map(staging.get(), 0, D3D11_MAP_READ, 0, &mapped); FAILED(result)) {
        return result;
    }
    // Straight into the image: a block in between would be a third one of 4 MiB, for the same bytes.
    copyRows(mapped, description, image);
    context.Unmap(staging.get(), 0);
    return S_OK;
}

} // namespace vexil::module::video_card
