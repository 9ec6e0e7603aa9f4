#include "core/shared_api.h"
#include "platform/library_names.h"
#include "simulated/direct3d/real_library.h"
#include "simulated/direct3d/simulated_direct3d.h"

// The Direct3D library of a simulated machine.
namespace {

using namespace vexil::simulated;

template <typename Function>
Function real(const char* symbol) {
    return reinterpret_cast<Function>(realSymbol(vexil::platform::direct3dLibrary(), symbol));
}

} // namespace

extern "C" {

/// For the host, which tells the user of a missing library.
VEXIL_SHARED_API int VexilHasRealLibrary() { return real<void*>("D3D11CreateDevice") == nullptr ? 0 : 1; }

VEXIL_SHARED_API HRESULT WINAPI D3D11CreateDevice(IDXGIAdapter* adapter, D3D_DRIVER_TYPE driverType,
                                                  HMODULE software, UINT flags,
                                                  const D3D_FEATURE_LEVEL* featureLevels,
                                                  UINT featureLevelCount, UINT sdkVersion,
                                                  ID3D11Device** device, D3D_FEATURE_LEVEL* featureLevel,
                                                  ID3D11DeviceContext** context) {
    return createSimulatedDevice(real<PFN_D3D11_CREATE_DEVICE>("D3D11CreateDevice"),
                                 {adapter, driverType, software, flags, featureLevels, featureLevelCount,
                                  sdkVersion, device, featureLevel, context});
}
}
