#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

// The depth and stencil set-up that the renderers of the module share.
namespace vexil::module::video_card {

inline constexpr DXGI_FORMAT depthFormat = DXGI_FORMAT_D24_UNORM_S8_UINT;
inline constexpr UINT stencilReference = 1;

[[nodiscard]] constexpr D3D11_DEPTH_STENCIL_DESC depthStencilDescription() {
    D3D11_DEPTH_STENCIL_DESC description{};
    description.DepthEnable = TRUE;
    description.DepthWriteMask = D3D11_DEPTH_WRITE_MASK_ALL;
    description.DepthFunc = D3D11_COMPARISON_LESS;
    description.StencilEnable = TRUE;
    description.StencilReadMask = 255;
    description.StencilWriteMask = 255;
    description.FrontFace = {D3D11_STENCIL_OP_KEEP, D3D11_STENCIL_OP_INCR, D3D11_STENCIL_OP_KEEP,
                             D3D11_COMPARISON_ALWAYS};
    description.BackFace = {D3D11_STENCIL_OP_KEEP, D3D11_STENCIL_OP_DECR, D3D11_STENCIL_OP_KEEP,
                            D3D11_COMPARISON_ALWAYS};
    return description;
}

/// The view has the dimension of a multisampled texture, though the texture has one sample; drivers are given
/// it so since the first version of these tests.
[[nodiscard]] constexpr D3D11_DEPTH_STENCIL_VIEW_DESC depthViewDescription() {
    D3D11_DEPTH_STENCIL_VIEW_DESC description{};
    description.Format = depthFormat;
    description.ViewDimension = D3D11_DSV_DIMENSION_TEXTURE2DMS;
    return description;
}

/// Texture, state and view, in this order; the state is bound as soon as it is made. `texture` describes the
/// first of them. The result is that of the first call that fails.
struct DepthTarget {
    ComShared<ID3D11Texture2D>& texture;
    ComShared<ID3D11DepthStencilState>& state;
    ComShared<ID3D11DepthStencilView>& view;
};
[[nodiscard]] HRESULT createDepthTarget(ID3D11Device& device, ID3D11DeviceContext& context,
                                        const D3D11_TEXTURE2D_DESC& texture,
                                        const D3D11_DEPTH_STENCIL_DESC& state, const DepthTarget& target);

} // namespace vexil::module::video_card
