#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

namespace vexil::module::video_card {

/// A texture that is drawn to in one frame and read in the next.
struct OffscreenTarget {
    ComShared<ID3D11Texture2D> texture;
    ComShared<ID3D11RenderTargetView> renderTargetView;
    ComShared<ID3D11ShaderResourceView> shaderResourceView;
};

} // namespace vexil::module::video_card
