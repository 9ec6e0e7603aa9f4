#pragma once

#include "simulated/direct3d/adapter_proxy.h"
#include "simulated/direct3d/simulated_card.h"

#include <memory>

namespace vexil::simulated {

class SimulatedFactory;

/// A simulated card as DXGI lists it, with a real adapter to make its devices on. It does not lead to the
/// newer interfaces of the real adapter, which would tell of another card.
class SimulatedAdapter final : public AdapterProxy {
public:
    /// By which a simulated adapter is told from a real one.
    static constexpr GUID id{0xD0A8B3C4, 0x77E1, 0x4A0D, {0xB4, 0x5E, 0x16, 0xC9, 0x82, 0x3F, 0xA7, 0x08}};

    /// Takes over the reference to `real`, and takes one of its own to `factory`.
    SimulatedAdapter(IDXGIAdapter* real, std::shared_ptr<SimulatedCard> card, SimulatedFactory& factory);
    virtual ~SimulatedAdapter();

    [[nodiscard]] const std::shared_ptr<SimulatedCard>& card() const { return card_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }
    HRESULT STDMETHODCALLTYPE GetParent(REFIID wanted, void** parent) override;
    HRESULT STDMETHODCALLTYPE GetDesc(DXGI_ADAPTER_DESC* desc) override;

private:
    ReferenceCount references_;
    std::shared_ptr<SimulatedCard> card_;
    SimulatedFactory& factory_;
};

} // namespace vexil::simulated
