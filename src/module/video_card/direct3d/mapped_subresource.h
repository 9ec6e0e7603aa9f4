#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

namespace vexil::module::video_card {

/// What `Map` gave. Its data pointer is null if the call failed. The last owner unmaps; until then context
/// and resource stay alive.
[[nodiscard]] ComShared<D3D11_MAPPED_SUBRESOURCE>
mapSubresource(const ComShared<ID3D11DeviceContext>& context, const ComShared<ID3D11Resource>& resource,
               UINT subresource, D3D11_MAP type);

} // namespace vexil::module::video_card
