#pragma once

#include "simulated/direct3d/factory_proxy.h"
#include "simulated/direct3d/simulated_card.h"

#include <memory>
#include <vector>

namespace vexil::simulated {

/// A factory that lists simulated cards. The first adapter of the real factory stands behind each of them;
/// without one the list is empty.
class SimulatedFactory final : public FactoryProxy {
public:
    /// Takes over the reference to `real`.
    SimulatedFactory(IDXGIFactory* real, std::vector<std::shared_ptr<SimulatedCard>> cards);
    virtual ~SimulatedFactory();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }
    HRESULT STDMETHODCALLTYPE EnumAdapters(UINT index, IDXGIAdapter** adapter) override;
    HRESULT STDMETHODCALLTYPE CreateSwapChain(IUnknown* device, DXGI_SWAP_CHAIN_DESC* desc,
                                              IDXGISwapChain** swapChain) override;

private:
    ReferenceCount references_;
    std::vector<std::shared_ptr<SimulatedCard>> cards_;
};

} // namespace vexil::simulated
