#include "module/video_card/direct3d/surface_list.h"

#include "module/video_card/direct3d/com_create.h"

#include <new>
#include <utility>

namespace vexil::module::video_card {

namespace {

constexpr DXGI_FORMAT surfaceFormat = DXGI_FORMAT_R8G8B8A8_UNORM;

constexpr D3D11_TEXTURE2D_DESC surfaceDescription() {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = surfaceExtent;
    description.Height = surfaceExtent;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = surfaceFormat;
    description.SampleDesc = {1, 0};
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = D3D11_BIND_SHADER_RESOURCE;
    return description;
}

HRESULT createView(ID3D11Device& device, VideoSurface& surface) {
    D3D11_SHADER_RESOURCE_VIEW_DESC description{};
    description.Format = surfaceFormat;
    description.ViewDimension = D3D11_SRV_DIMENSION_TEXTURE2D;
    description.Texture2D.MostDetailedMip = 0;
    description.Texture2D.MipLevels = 1;
    return createCom(surface.view, [&](auto out) {
        return device.CreateShaderResourceView(surface.texture.get(), &description, out);
    });
}

} // namespace

bool createSurfaces(ID3D11Device& device, std::uint32_t count, std::vector<VideoSurface>& surfaces) {
    static constexpr auto description = surfaceDescription();
    try {
        for (std::uint32_t i = 0; i < count; ++i) {
            VideoSurface surface;
            const HRESULT result = createCom(surface.texture, [&](auto out) {
                return device.CreateTexture2D(&description, nullptr, out);
            });
            if (result == E_OUTOFMEMORY && !surfaces.empty()) {
                return true;
            }
            if (FAILED(result) || FAILED(createView(device, surface))) {
                return false;
            }
            surfaces.push_back(std::move(surface));
        }
        return !surfaces.empty();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace vexil::module::video_card
