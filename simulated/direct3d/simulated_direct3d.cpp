#include "simulated/direct3d/simulated_direct3d.h"

#include "simulated/direct3d/simulated_adapter.h"
#include "simulated/direct3d/simulated_device.h"
#include "simulated/direct3d/simulated_factory.h"

#include <array>
#include <cstdio>
#include <string>
#include <utility>

namespace vexil::simulated {

namespace {

HRESULT createReal(PFN_D3D11_CREATE_DEVICE real, const DeviceRequest& request, IDXGIAdapter* adapter,
                   ID3D11Device** device, ID3D11DeviceContext** context) {
    return real(adapter, request.driverType, request.software, request.flags, request.featureLevels,
                request.featureLevelCount, request.sdkVersion, device, request.featureLevel, context);
}

std::string creationText(const DeviceRequest& request) {
    std::array<char, 128> text{};
    const auto level = request.featureLevels == nullptr ? 0U : static_cast<unsigned>(*request.featureLevels);
    std::snprintf(text.data(), text.size(), "D3D11CreateDevice(%u, %s, %u, [%u], %u, %u, %s)",
                  static_cast<unsigned>(request.driverType), request.software == nullptr ? "null" : "*",
                  request.flags, level, request.featureLevelCount, request.sdkVersion,
                  request.featureLevel == nullptr ? "null" : "*");
    return text.data();
}

/// With a device and its context in every case: they are one object.
HRESULT createOn(SimulatedAdapter& adapter, PFN_D3D11_CREATE_DEVICE real, const DeviceRequest& request) {
    const auto& card = adapter.card();
    if (const HRESULT refused = card->failingCalls().admit("D3D11CreateDevice"); FAILED(refused)) {
        return refused;
    }
    ID3D11Device* device = nullptr;
    ID3D11DeviceContext* context = nullptr;
    const HRESULT result = createReal(real, request, adapter.real(), &device, &context);
    if (card->log()) {
        card->log()->add(creationText(request));
    }
    if (FAILED(result)) {
        return result;
    }
    auto* const simulated = new SimulatedDevice(device, context, card);
    if (request.device != nullptr) {
        simulated->AddRef();
        *request.device = simulated;
    }
    if (request.context != nullptr) {
        simulated->AddRef();
        *request.context = simulated->context();
    }
    simulated->Release();
    return result;
}

} // namespace

std::vector<std::shared_ptr<SimulatedCard>> direct3dCards(const Scenario& scenario,
                                                          std::shared_ptr<CallLog> log) {
    std::vector<std::shared_ptr<SimulatedCard>> cards;
    for (const auto& card : scenario.cards) {
        if (card.direct3d.present) {
            cards.push_back(
                std::make_shared<SimulatedCard>(Direct3DIdentity{card.name, hexadecimal(card.vendorId),
                                                                 hexadecimal(card.deviceId), card.luid},
                                                card.direct3d, log));
        }
    }
    return cards;
}

HRESULT createSimulatedFactory(CreateFactoryFunction real, std::vector<std::shared_ptr<SimulatedCard>> cards,
                               REFIID wanted, void** factory) {
    *factory = nullptr;
    void* backing = nullptr;
    const HRESULT result = real == nullptr ? DXGI_ERROR_UNSUPPORTED : real(__uuidof(IDXGIFactory), &backing);
    if (FAILED(result)) {
        return result;
    }
    auto* const simulated = new SimulatedFactory(static_cast<IDXGIFactory*>(backing), std::move(cards));
    const HRESULT found = simulated->QueryInterface(wanted, factory);
    simulated->Release();
    return found;
}

HRESULT createSimulatedDevice(PFN_D3D11_CREATE_DEVICE real, const DeviceRequest& request) {
    if (real == nullptr) {
        return DXGI_ERROR_UNSUPPORTED;
    }
    SimulatedAdapter* adapter = nullptr;
    if (request.adapter == nullptr ||
        FAILED(request.adapter->QueryInterface(SimulatedAdapter::id, reinterpret_cast<void**>(&adapter)))) {
        return createReal(real, request, request.adapter, request.device, request.context);
    }
    const HRESULT result = createOn(*adapter, real, request);
    adapter->Release();
    return result;
}

} // namespace vexil::simulated
