#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>

#include <cstdint>

namespace vexil::module::video_card {

/// A picture of the card, mapped for the processor. The last owner of `data` unmaps it.
struct ImageReadBack {
    ComShared<D3D11_MAPPED_SUBRESOURCE> data; ///< its `pData` is the picture, its `RowPitch` the card's own
    std::uint64_t sizeBytes = 0;              ///< width times height times 4
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// What the driver of a stress test knows of a renderer.
class D3D11Renderer {
public:
    virtual ~D3D11Renderer() = default;

    /// False if the picture could not be mapped. What `out` held before is released first.
    [[nodiscard]] virtual bool readBack(ImageReadBack& out) = 0;
    [[nodiscard]] virtual std::uint64_t frameCount() = 0;
    /// Since the first frame; not finite before it.
    [[nodiscard]] virtual float framesPerSecond() = 0;
};

} // namespace vexil::module::video_card
