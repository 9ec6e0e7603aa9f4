#include "module/video_card/direct3d/direct3d_api.h"

#include "platform/direct3d_environment.h"
#include "platform/library_names.h"
#include "system/win_module.h"

#include <utility>

namespace vexil::module::video_card {

namespace {

/// What answers to the name already is the Direct3D of this process: the one that a window system has
/// brought, or a stand-in.
template <typename Function>
Function resolve(Module& loader, const char* library, const char* symbol) {
    void* const handle = system::loadedOrFound(loader, library);
    return handle == nullptr ? nullptr : reinterpret_cast<Function>(loader.resolve(handle, symbol));
}

Direct3DApi loadDirect3D() {
    if (platform::prepareDirect3D() != nullptr) {
        return {};
    }
    Module& loader = *getModule();
    return {resolve<Direct3DApi::CreateFactory>(loader, platform::dxgiLibrary(), "CreateDXGIFactory"),
            resolve<PFN_D3D11_CREATE_DEVICE>(loader, platform::direct3dLibrary(), "D3D11CreateDevice")};
}

Direct3DApi& apiInUse() {
    static Direct3DApi api = loadDirect3D();
    return api;
}

} // namespace

Direct3DApi direct3dApi() { return apiInUse(); }

Direct3DApi exchangeDirect3DApi(const Direct3DApi& api) { return std::exchange(apiInUse(), api); }

} // namespace vexil::module::video_card
