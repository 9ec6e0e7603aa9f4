#include "simulated/direct3d/simulated_adapter.h"

#include "simulated/direct3d/simulated_factory.h"

#include <utility>

namespace vexil::simulated {

SimulatedAdapter::SimulatedAdapter(IDXGIAdapter* real, std::shared_ptr<SimulatedCard> card,
                                   SimulatedFactory& factory)
    : AdapterProxy(real), card_(std::move(card)), factory_(factory) {
    factory_.AddRef();
}

SimulatedAdapter::~SimulatedAdapter() {
    real()->Release();
    factory_.Release();
}

HRESULT SimulatedAdapter::QueryInterface(REFIID wanted, void** object) {
    if (wanted == __uuidof(IUnknown) || wanted == __uuidof(IDXGIObject) || wanted == __uuidof(IDXGIAdapter) ||
        wanted == id) {
        AddRef();
        *object = this;
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT SimulatedAdapter::GetParent(REFIID wanted, void** parent) {
    return factory_.QueryInterface(wanted, parent);
}

HRESULT SimulatedAdapter::GetDesc(DXGI_ADAPTER_DESC* desc) {
    if (const HRESULT refused = card_->failingCalls().admit("IDXGIAdapter::GetDesc"); FAILED(refused)) {
        return refused;
    }
    *desc = card_->adapterDescription();
    return S_OK;
}

} // namespace vexil::simulated
