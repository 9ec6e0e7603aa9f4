#pragma once

#include <d3d11.h>
#include <dxgi.h>

namespace vexil::module::video_card {

/// The two functions by which a program gets into Direct3D. One that the machine lacks is null.
struct Direct3DApi {
    using CreateFactory = HRESULT(WINAPI*)(REFIID, void**);

    CreateFactory createFactory = nullptr;          ///< `CreateDXGIFactory`
    PFN_D3D11_CREATE_DEVICE createDevice = nullptr; ///< `D3D11CreateDevice`
};

/// The functions in use. On the first call the machine's libraries are loaded, for the rest of the process:
/// the drivers behind them do not survive being unloaded.
[[nodiscard]] Direct3DApi direct3dApi();

/// Puts other functions in the place of the machine's, and returns those that were in use. For tests, which
/// run the same code against a Direct3D of their own; no device may be in the making meanwhile.
Direct3DApi exchangeDirect3DApi(const Direct3DApi& api);

} // namespace vexil::module::video_card
