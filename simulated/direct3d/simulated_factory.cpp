#include "simulated/direct3d/simulated_factory.h"

#include "simulated/direct3d/call_text.h"
#include "simulated/direct3d/simulated_adapter.h"
#include "simulated/direct3d/simulated_device.h"
#include "simulated/direct3d/simulated_swap_chain.h"

#include <utility>

namespace vexil::simulated {

SimulatedFactory::SimulatedFactory(IDXGIFactory* real, std::vector<std::shared_ptr<SimulatedCard>> cards)
    : FactoryProxy(real), cards_(std::move(cards)) {}

SimulatedFactory::~SimulatedFactory() { real()->Release(); }

HRESULT SimulatedFactory::QueryInterface(REFIID wanted, void** object) {
    if (wanted == __uuidof(IUnknown) || wanted == __uuidof(IDXGIObject) || wanted == __uuidof(IDXGIFactory)) {
        AddRef();
        *object = this;
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT SimulatedFactory::EnumAdapters(UINT index, IDXGIAdapter** adapter) {
    *adapter = nullptr;
    if (index >= cards_.size()) {
        return DXGI_ERROR_NOT_FOUND;
    }
    IDXGIAdapter* backing = nullptr;
    const HRESULT result = real()->EnumAdapters(0, &backing);
    if (SUCCEEDED(result)) {
        *adapter = new SimulatedAdapter(backing, cards_[index], *this);
    }
    return result;
}

HRESULT SimulatedFactory::CreateSwapChain(IUnknown* device, DXGI_SWAP_CHAIN_DESC* desc,
                                          IDXGISwapChain** swapChain) {
    SimulatedDevice* simulated = nullptr;
    if (FAILED(device->QueryInterface(SimulatedDevice::id, reinterpret_cast<void**>(&simulated)))) {
        return real()->CreateSwapChain(device, desc, swapChain);
    }
    HRESULT result = simulated->faults().admit("CreateSwapChain");
    if (SUCCEEDED(result)) {
        result = real()->CreateSwapChain(simulated->real(), desc, swapChain);
    }
    const auto log = simulated->faults().card().log();
    simulated->Release();
    if (log) {
        CallText text(*log, "CreateSwapChain");
        text.arguments(static_cast<const DXGI_SWAP_CHAIN_DESC*>(desc));
        log->add(text.finish(result));
    }
    if (SUCCEEDED(result)) {
        *swapChain = new SimulatedSwapChain(*swapChain, log);
    }
    return result;
}

} // namespace vexil::simulated
