#include "module/video_card/direct3d/surface_list.h"

#include "module/video_card/direct3d/resource_creation.h"

#include <new>
#include <utility>

namespace vexil::module::video_card {

bool createSurfaces(ID3D11Device& device, std::uint32_t count, std::vector<VideoSurface>& surfaces) {
    static constexpr auto description =
        plainTexture(surfaceExtent, surfaceExtent, DXGI_FORMAT_R8G8B8A8_UNORM, D3D11_BIND_SHADER_RESOURCE);
    try {
        for (std::uint32_t i = 0; i < count; ++i) {
            VideoSurface surface;
            const HRESULT result = createTexture(device, description, nullptr, surface.texture);
            if (result == E_OUTOFMEMORY && !surfaces.empty()) {
                return true;
            }
            if (FAILED(result) || FAILED(createResourceView(device, *surface.texture, 1, surface.view))) {
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
