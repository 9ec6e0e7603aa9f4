#include "simulated/direct3d/device_faults.h"

#include "simulated/direct3d/memory_ticket.h"
#include "simulated/direct3d/work_faults.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>

namespace vexil::simulated {

namespace {

constexpr std::size_t pixelBytes = 4;
constexpr std::uint64_t unlimited = std::numeric_limits<std::uint64_t>::max();
constexpr UINT surfaceExtent = 1024;
constexpr std::size_t surfaceRowBytes = surfaceExtent * pixelBytes;

std::uint64_t textureBytes(const D3D11_TEXTURE2D_DESC& desc) {
    return std::uint64_t{desc.Width} * desc.Height * desc.ArraySize * pixelBytes;
}

/// Such calls fail on a device that is gone.
bool needsDevice(std::string_view call) { return call.starts_with("Create") || call == "Map"; }

/// Such calls do nothing on a device that is gone. What is bound to it still changes: that is the runtime's.
bool isWork(std::string_view call) {
    return call.starts_with("Draw") || call.starts_with("Dispatch") || call.starts_with("Copy") ||
           call == "ResolveSubresource" || (call.starts_with("Clear") && call != "ClearState");
}

} // namespace

bool hasSurfaceShape(const D3D11_TEXTURE2D_DESC& desc) {
    return desc.Width == surfaceExtent && desc.Height == surfaceExtent && desc.Usage == D3D11_USAGE_DEFAULT &&
           desc.BindFlags == D3D11_BIND_SHADER_RESOURCE;
}

DeviceFaults::DeviceFaults(std::shared_ptr<SimulatedCard> card)
    : card_(std::move(card)), failingCalls_(card_->section()) {}

const Direct3DFault* DeviceFaults::find(Direct3DFault::Kind kind) const {
    const auto& faults = card_->section().faults;
    const auto found = std::ranges::find(faults, kind, &Direct3DFault::kind);
    return found == faults.end() ? nullptr : &*found;
}

HRESULT DeviceFaults::admit(const char* call) {
    const std::lock_guard lock(mutex_);
    if (FAILED(removedReason_) && needsDevice(call)) {
        return removedReason_;
    }
    return failingCalls_.admit(call);
}

bool DeviceFaults::reachesCard(const char* call) {
    const std::lock_guard lock(mutex_);
    const bool refused = FAILED(removedReason_) && isWork(call);
    return !refused && !failingCalls_.isLost(call);
}

void DeviceFaults::drawnIndexed() {
    const std::lock_guard lock(mutex_);
    const auto* const fault = find(Direct3DFault::Kind::removedInDrawing);
    if (fault != nullptr && ++indexedDrawings_ >= fault->number) {
        removedReason_ = static_cast<HRESULT>(fault->result);
    }
}

bool DeviceFaults::isNewSurface(const D3D11_TEXTURE2D_DESC& desc, bool hasContent) const {
    return hasSurfaceShape(desc) && !hasContent && surfacesWritten_ == 0;
}

HRESULT DeviceFaults::admitTexture(const D3D11_TEXTURE2D_DESC& desc, bool hasContent) {
    const std::lock_guard lock(mutex_);
    if (!isNewSurface(desc, hasContent)) {
        return S_OK;
    }
    const auto* const fault = find(Direct3DFault::Kind::surfaceAllocation);
    if (fault != nullptr && surfacesMade_ + 1 >= fault->number) {
        return static_cast<HRESULT>(fault->result);
    }
    const auto& section = card_->section();
    const auto bytes = textureBytes(desc);
    const auto onlyShared = section.oneSurfaceMemory && surfacesMade_ > 0 ? (surfacesMade_ - 1) * bytes : 0;
    return card_->usedMemory + onlyShared + bytes > section.memoryBudget.value_or(unlimited) ? E_OUTOFMEMORY
                                                                                             : S_OK;
}

HRESULT DeviceFaults::admitShader(std::span<const std::byte> bytecode) const {
    const bool refuses = find(Direct3DFault::Kind::noDoubles) != nullptr && needsDoubles(bytecode);
    return refuses ? E_INVALIDARG : S_OK;
}

ID3D11Texture2D* DeviceFaults::sharedSurface(const D3D11_TEXTURE2D_DESC& desc, bool hasContent) {
    const std::lock_guard lock(mutex_);
    if (!card_->section().oneSurfaceMemory || !isNewSurface(desc, hasContent) || sharedSurface_ == nullptr) {
        return nullptr;
    }
    ++surfacesMade_;
    sharedSurface_->AddRef();
    return sharedSurface_;
}

void DeviceFaults::textureMade(ID3D11Texture2D& texture, const D3D11_TEXTURE2D_DESC& desc, bool hasContent) {
    const std::lock_guard lock(mutex_);
    if (isNewSurface(desc, hasContent)) {
        ++surfacesMade_;
        sharedSurface_ = &texture;
    }
    // What the processor reads lies in the memory of the system.
    if (desc.Usage != D3D11_USAGE_STAGING) {
        take(texture, textureBytes(desc));
    }
}

void DeviceFaults::bufferMade(ID3D11Buffer& buffer, const D3D11_BUFFER_DESC& desc) {
    if (desc.Usage != D3D11_USAGE_STAGING) {
        take(buffer, desc.ByteWidth);
    }
}

void DeviceFaults::take(ID3D11DeviceChild& resource, std::uint64_t bytes) {
    auto* const ticket = new MemoryTicket(card_, bytes);
    resource.SetPrivateDataInterface(MemoryTicket::id, ticket);
    ticket->Release();
}

std::optional<std::vector<std::uint8_t>> DeviceFaults::upload(std::span<const std::uint8_t> rows,
                                                              std::size_t rowPitch) {
    const std::lock_guard lock(mutex_);
    const auto* const fault = find(Direct3DFault::Kind::changedByte);
    if (++surfacesWritten_ != (fault == nullptr ? 0 : fault->number)) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> changed(rows.begin(), rows.end());
    const auto row = fault->offset / surfaceRowBytes;
    changed.at(row * rowPitch + fault->offset % surfaceRowBytes) ^= fault->mask;
    return changed;
}

HRESULT DeviceFaults::removedReason(HRESULT real) {
    const std::lock_guard lock(mutex_);
    const auto* const fault = find(Direct3DFault::Kind::deviceRemoved);
    // The turn of a surface comes when those before it are written, and not before it is made.
    if (fault != nullptr && surfacesMade_ >= fault->number && surfacesWritten_ + 1 >= fault->number) {
        removedReason_ = static_cast<HRESULT>(fault->result);
    }
    return FAILED(removedReason_) ? removedReason_ : real;
}

UINT DeviceFaults::formatSupport(UINT real) const {
    const bool missing = find(Direct3DFault::Kind::noResolveSupport) != nullptr;
    return missing ? real & ~static_cast<UINT>(D3D11_FORMAT_SUPPORT_MULTISAMPLE_RESOLVE) : real;
}

} // namespace vexil::simulated
