#pragma once

#include "simulated/direct3d/com_proxy.h"
#include "simulated/direct3d/simulated_card.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace vexil::simulated {

/// The memory that a real resource takes from a simulated card. The resource holds it as private data, and
/// gives the memory back with it.
class MemoryTicket final : public IUnknown {
public:
    static constexpr GUID id{0x8C1D7E5A, 0x3B0F, 0x4E52, {0x9A, 0x61, 0x2F, 0x7D, 0x0B, 0x94, 0xC6, 0x13}};

    MemoryTicket(std::shared_ptr<SimulatedCard> card, std::uint64_t bytes)
        : card_(std::move(card)), bytes_(bytes) {
        card_->usedMemory += bytes_;
    }
    virtual ~MemoryTicket() { card_->usedMemory -= bytes_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }

private:
    ReferenceCount references_;
    std::shared_ptr<SimulatedCard> card_;
    std::uint64_t bytes_;
};

} // namespace vexil::simulated
