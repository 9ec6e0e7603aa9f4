#include "core/shared_api.h"
#include "platform/library_names.h"
#include "simulated/direct3d/real_library.h"
#include "simulated/direct3d/simulated_direct3d.h"

// The DXGI library of a simulated machine. The scenario is read again for every factory, that is, for every
// scan.
namespace {

using namespace vexil::simulated;

template <typename Function>
Function real(const char* symbol) {
    return reinterpret_cast<Function>(realSymbol(vexil::platform::dxgiLibrary(), symbol));
}

std::vector<std::shared_ptr<SimulatedCard>> cardsOfProcess() {
    const auto file = scenarioFileOfProcess();
    return file ? direct3dCards(loadScenario(*file)) : std::vector<std::shared_ptr<SimulatedCard>>();
}

} // namespace

extern "C" {

/// For the host, which tells the user of a missing library.
VEXIL_SHARED_API int VexilHasRealLibrary() { return real<void*>("CreateDXGIFactory") == nullptr ? 0 : 1; }

VEXIL_SHARED_API HRESULT WINAPI CreateDXGIFactory(REFIID wanted, void** factory) {
    try {
        return createSimulatedFactory(real<CreateFactoryFunction>("CreateDXGIFactory"), cardsOfProcess(),
                                      wanted, factory);
    } catch (const ScenarioError&) {
        return E_FAIL;
    }
}

// The real Direct3D library comes here too, since this is what it finds under the name of DXGI.

VEXIL_SHARED_API HRESULT WINAPI CreateDXGIFactory1(REFIID wanted, void** factory) {
    const auto create = real<CreateFactoryFunction>("CreateDXGIFactory1");
    return create == nullptr ? DXGI_ERROR_UNSUPPORTED : create(wanted, factory);
}

VEXIL_SHARED_API HRESULT WINAPI CreateDXGIFactory2(UINT flags, REFIID wanted, void** factory) {
    const auto create = real<HRESULT(WINAPI*)(UINT, REFIID, void**)>("CreateDXGIFactory2");
    return create == nullptr ? DXGI_ERROR_UNSUPPORTED : create(flags, wanted, factory);
}

VEXIL_SHARED_API HRESULT WINAPI DXGIGetDebugInterface1(UINT flags, REFIID wanted, void** debug) {
    const auto get = real<HRESULT(WINAPI*)(UINT, REFIID, void**)>("DXGIGetDebugInterface1");
    return get == nullptr ? E_NOINTERFACE : get(flags, wanted, debug);
}

VEXIL_SHARED_API HRESULT WINAPI DXGIDeclareAdapterRemovalSupport() {
    const auto declare = real<HRESULT(WINAPI*)()>("DXGIDeclareAdapterRemovalSupport");
    return declare == nullptr ? S_OK : declare();
}
}
