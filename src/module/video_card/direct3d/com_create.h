#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

namespace vexil::module::video_card {

/// Calls `create(T**)` and takes over what it made. `owner` keeps what it holds on a failure.
template <typename T, typename Create>
[[nodiscard]] HRESULT createCom(ComShared<T>& owner, Create create) {
    T* object = nullptr;
    const HRESULT result = create(&object);
    if (SUCCEEDED(result)) {
        owner = shareCom(object);
    }
    return result;
}

/// `content` is null for a texture that begins without any.
[[nodiscard]] inline HRESULT createTexture2D(ID3D11Device& device, const D3D11_TEXTURE2D_DESC& description,
                                             const D3D11_SUBRESOURCE_DATA* content,
                                             ComShared<ID3D11Texture2D>& texture) {
    return createCom(texture, [&](auto out) { return device.CreateTexture2D(&description, content, out); });
}

} // namespace vexil::module::video_card
