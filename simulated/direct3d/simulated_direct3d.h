#pragma once

#include "simulated/direct3d/simulated_card.h"
#include "simulated/scenario/scenario.h"

#include <d3d11.h>
#include <dxgi.h>

#include <memory>
#include <vector>

// The two ways into Direct3D, on a machine with simulated cards.
namespace vexil::simulated {

using CreateFactoryFunction = HRESULT(WINAPI*)(REFIID, void**);

/// The cards of a scenario that Direct3D lists.
[[nodiscard]] std::vector<std::shared_ptr<SimulatedCard>>
direct3dCards(const Scenario& scenario, std::shared_ptr<CallLog> log = nullptr);

/// As `CreateDXGIFactory`. `real` is null where the machine has no Direct3D.
[[nodiscard]] HRESULT createSimulatedFactory(CreateFactoryFunction real,
                                             std::vector<std::shared_ptr<SimulatedCard>> cards, REFIID wanted,
                                             void** factory);

/// The arguments of `D3D11CreateDevice`.
struct DeviceRequest {
    IDXGIAdapter* adapter;
    D3D_DRIVER_TYPE driverType;
    HMODULE software;
    UINT flags;
    const D3D_FEATURE_LEVEL* featureLevels;
    UINT featureLevelCount;
    UINT sdkVersion;
    ID3D11Device** device;
    D3D_FEATURE_LEVEL* featureLevel;
    ID3D11DeviceContext** context;
};

/// As `D3D11CreateDevice`. A request for an adapter that is not simulated is handed on as it is.
[[nodiscard]] HRESULT createSimulatedDevice(PFN_D3D11_CREATE_DEVICE real, const DeviceRequest& request);

} // namespace vexil::simulated
