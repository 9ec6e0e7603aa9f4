#pragma once

#include "simulated/direct3d/simulated_card.h"

#include <d3d11.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace vexil::simulated {

/// Surfaces are what the video memory tests work on: textures of 1024 by 1024 pixels of 4 bytes, of default
/// usage, that only shaders read, made without content before the first of them is written. They are written,
/// drawn and read back one by one, in the order in which they were made.
[[nodiscard]] bool hasSurfaceShape(const D3D11_TEXTURE2D_DESC& desc);

/// Decides, call by call, what goes wrong on one device of a simulated card. The proxies ask here and nowhere
/// else.
class DeviceFaults {
public:
    explicit DeviceFaults(std::shared_ptr<SimulatedCard> card);

    /// S_OK, or the failure that the call is to return without being made.
    [[nodiscard]] HRESULT admit(const char* call);
    /// Likewise, for a texture that is about to be made.
    [[nodiscard]] HRESULT admitTexture(const D3D11_TEXTURE2D_DESC& desc, bool hasContent);
    /// Likewise, for a compiled shader.
    [[nodiscard]] HRESULT admitShader(std::span<const std::byte> bytecode) const;
    /// Whether a call without a result is to be made.
    [[nodiscard]] bool reachesCard(const char* call);
    /// To be told of every indexed drawing.
    void drawnIndexed();
    /// What stands in for the new surface; null if it is to be made.
    [[nodiscard]] ID3D11Texture2D* sharedSurface(const D3D11_TEXTURE2D_DESC& desc, bool hasContent);
    /// To be told of every texture and buffer that was made: they take from the card's memory while they
    /// live.
    void textureMade(ID3D11Texture2D& texture, const D3D11_TEXTURE2D_DESC& desc, bool hasContent);
    void bufferMade(ID3D11Buffer& buffer, const D3D11_BUFFER_DESC& desc);

    /// Of a whole surface: what is to be stored in place of `rows`; nothing where they are stored as they
    /// are.
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> upload(std::span<const std::uint8_t> rows,
                                                                  std::size_t rowPitch);
    [[nodiscard]] HRESULT removedReason(HRESULT real);
    [[nodiscard]] UINT formatSupport(UINT real) const;

    [[nodiscard]] const SimulatedCard& card() const { return *card_; }

private:
    [[nodiscard]] const Direct3DFault* find(Direct3DFault::Kind kind) const;
    [[nodiscard]] bool isNewSurface(const D3D11_TEXTURE2D_DESC& desc, bool hasContent) const;
    void take(ID3D11DeviceChild& resource, std::uint64_t bytes);

    std::shared_ptr<SimulatedCard> card_;
    FailingCalls failingCalls_;
    std::recursive_mutex mutex_;
    std::uint32_t surfacesMade_ = 0;
    std::uint32_t surfacesWritten_ = 0;
    std::uint32_t indexedDrawings_ = 0;
    HRESULT removedReason_ = S_OK;
    ID3D11Texture2D* sharedSurface_ =
        nullptr; ///< alive as long as the list of surfaces that it was handed out for
};

} // namespace vexil::simulated
