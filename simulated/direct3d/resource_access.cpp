#include "simulated/direct3d/resource_access.h"

#include <cstring>

namespace vexil::simulated {

namespace {

constexpr UINT pixelBytes = 4;

template <typename T>
Com<T> take(T* object) {
    return {object, [](T* owned) {
                if (owned != nullptr) {
                    owned->Release();
                }
            }};
}

Com<ID3D11Device> deviceOf(ID3D11DeviceContext& real) {
    ID3D11Device* device = nullptr;
    real.GetDevice(&device);
    return take(device);
}

template <typename View>
Com<ID3D11Resource> resourceOf(View* view) {
    const auto owner = take(view);
    ID3D11Resource* resource = nullptr;
    if (owner) {
        owner->GetResource(&resource);
    }
    return take(resource);
}

template <typename T>
Com<T> as(ID3D11Resource* resource) {
    T* object = nullptr;
    if (resource != nullptr) {
        static_cast<void>(resource->QueryInterface(__uuidof(T), reinterpret_cast<void**>(&object)));
    }
    return take(object);
}

void makeReadable(D3D11_BUFFER_DESC& desc) {
    desc.Usage = D3D11_USAGE_STAGING;
    desc.BindFlags = 0;
    desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    desc.MiscFlags = 0;
}

void makeReadable(D3D11_TEXTURE2D_DESC& desc) {
    desc.Usage = D3D11_USAGE_STAGING;
    desc.BindFlags = 0;
    desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
}

Com<ID3D11Resource> create(ID3D11Device& device, const D3D11_BUFFER_DESC& desc) {
    ID3D11Buffer* buffer = nullptr;
    static_cast<void>(device.CreateBuffer(&desc, nullptr, &buffer));
    return take(buffer);
}

Com<ID3D11Resource> create(ID3D11Device& device, const D3D11_TEXTURE2D_DESC& desc) {
    ID3D11Texture2D* texture = nullptr;
    static_cast<void>(device.CreateTexture2D(&desc, nullptr, &texture));
    return take(texture);
}

/// Reads bytes at the place that `placeOf` tells of the mapped copy.
template <typename Resource, typename PlaceOf>
bool read(ID3D11DeviceContext& real, Resource& resource, const PlaceOf& placeOf, std::span<std::byte> bytes) {
    auto desc = descriptionOf(resource);
    makeReadable(desc);
    const auto copy = create(*deviceOf(real), desc);
    if (!copy) {
        return false;
    }
    real.CopyResource(copy.get(), &resource);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (FAILED(real.Map(copy.get(), 0, D3D11_MAP_READ, 0, &mapped))) {
        return false;
    }
    std::memcpy(bytes.data(), static_cast<const std::byte*>(mapped.pData) + placeOf(mapped), bytes.size());
    real.Unmap(copy.get(), 0);
    return true;
}

} // namespace

Com<ID3D11Buffer> boundOutput(ID3D11DeviceContext& real) {
    ID3D11UnorderedAccessView* view = nullptr;
    real.CSGetUnorderedAccessViews(0, 1, &view);
    return as<ID3D11Buffer>(resourceOf(view).get());
}

Com<ID3D11Buffer> boundInput(ID3D11DeviceContext& real, UINT slot) {
    ID3D11ShaderResourceView* view = nullptr;
    real.CSGetShaderResources(slot, 1, &view);
    return as<ID3D11Buffer>(resourceOf(view).get());
}

Com<ID3D11Texture2D> boundTarget(ID3D11DeviceContext& real) {
    ID3D11RenderTargetView* view = nullptr;
    real.OMGetRenderTargets(1, &view, nullptr);
    return as<ID3D11Texture2D>(resourceOf(view).get());
}

Com<ID3D11Texture2D> asTexture(ID3D11Resource& resource) { return as<ID3D11Texture2D>(&resource); }

Com<ID3D11Buffer> asBuffer(ID3D11Resource& resource) { return as<ID3D11Buffer>(&resource); }

D3D11_BUFFER_DESC descriptionOf(ID3D11Buffer& buffer) {
    D3D11_BUFFER_DESC desc{};
    buffer.GetDesc(&desc);
    return desc;
}

D3D11_TEXTURE2D_DESC descriptionOf(ID3D11Texture2D& texture) {
    D3D11_TEXTURE2D_DESC desc{};
    texture.GetDesc(&desc);
    return desc;
}

bool readBuffer(ID3D11DeviceContext& real, ID3D11Buffer& buffer, UINT offset, std::span<std::byte> bytes) {
    return offset + bytes.size() <= descriptionOf(buffer).ByteWidth &&
           read(
               real, buffer, [&](const auto&) { return offset; }, bytes);
}

void writeBuffer(ID3D11DeviceContext& real, ID3D11Buffer& buffer, UINT offset,
                 std::span<const std::byte> bytes) {
    const D3D11_BOX box{offset, 0, 0, offset + static_cast<UINT>(bytes.size()), 1, 1};
    real.UpdateSubresource(&buffer, 0, &box, bytes.data(), 0, 0);
}

void changePixel(ID3D11DeviceContext& real, ID3D11Texture2D& texture, UINT pixel, std::uint8_t mask) {
    const auto desc = descriptionOf(texture);
    const UINT x = pixel % desc.Width;
    const UINT y = pixel / desc.Width;
    std::byte bytes[pixelBytes];
    const auto placeOf = [&](const D3D11_MAPPED_SUBRESOURCE& mapped) {
        return y * mapped.RowPitch + x * pixelBytes;
    };
    if (y < desc.Height && read(real, texture, placeOf, bytes)) {
        bytes[0] ^= std::byte{mask};
        const D3D11_BOX box{x, y, 0, x + 1, y + 1, 1};
        real.UpdateSubresource(&texture, 0, &box, bytes, pixelBytes, 0);
    }
}

} // namespace vexil::simulated
