#include "module/video_card/direct3d/depth_stencil.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/resource_creation.h"

namespace vexil::module::video_card {

HRESULT createDepthTarget(ID3D11Device& device, ID3D11DeviceContext& context,
                          const D3D11_TEXTURE2D_DESC& texture, const D3D11_DEPTH_STENCIL_DESC& state,
                          const DepthTarget& target) {
    static constexpr auto view = depthViewDescription();
    if (const HRESULT result = createTexture(device, texture, nullptr, target.texture); FAILED(result)) {
        return result;
    }
    const HRESULT result =
        createCom(target.state, [&](auto out) { return device.CreateDepthStencilState(&state, out); });
    if (FAILED(result)) {
        return result;
    }
    context.OMSetDepthStencilState(target.state.get(), stencilReference);
    return createCom(target.view, [&](auto out) {
        return device.CreateDepthStencilView(target.texture.get(), &view, out);
    });
}

} // namespace vexil::module::video_card
