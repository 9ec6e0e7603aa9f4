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

} // namespace vexil::module::video_card
