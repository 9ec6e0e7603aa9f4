#pragma once

#include "module/video_card/direct3d/direct3d_api.h"
#include "simulated/direct3d/simulated_direct3d.h"

#include <memory>
#include <utility>
#include <vector>

namespace vexil::tests {

/// Simulated cards in the place of the machine's adapters, in front of its real Direct3D, for as long as it
/// lives. One at a time.
class SimulatedDirect3DSession {
public:
    using Cards = std::vector<std::shared_ptr<simulated::SimulatedCard>>;

    explicit SimulatedDirect3DSession(Cards cards) : real_(module::video_card::direct3dApi()) {
        current() = this;
        cards_ = std::move(cards);
        module::video_card::exchangeDirect3DApi({createFactory, createDevice});
    }
    SimulatedDirect3DSession(const SimulatedDirect3DSession&) = delete;
    SimulatedDirect3DSession& operator=(const SimulatedDirect3DSession&) = delete;
    ~SimulatedDirect3DSession() { module::video_card::exchangeDirect3DApi(real_); }

private:
    static SimulatedDirect3DSession*& current() {
        static SimulatedDirect3DSession* session = nullptr;
        return session;
    }
    static HRESULT WINAPI createFactory(REFIID wanted, void** factory) {
        return simulated::createSimulatedFactory(current()->real_.createFactory, current()->cards_, wanted,
                                                 factory);
    }
    static HRESULT WINAPI createDevice(IDXGIAdapter* adapter, D3D_DRIVER_TYPE driverType, HMODULE software,
                                       UINT flags, const D3D_FEATURE_LEVEL* levels, UINT levelCount,
                                       UINT version, ID3D11Device** device, D3D_FEATURE_LEVEL* level,
                                       ID3D11DeviceContext** context) {
        return simulated::createSimulatedDevice(
            current()->real_.createDevice,
            {adapter, driverType, software, flags, levels, levelCount, version, device, level, context});
    }

    module::video_card::Direct3DApi real_;
    Cards cards_;
};

} // namespace vexil::tests
