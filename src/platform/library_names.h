#pragma once

#include <span>

// The file names under which this platform installs the libraries that the module loads at run time.
namespace vexil::platform {

[[nodiscard]] const char* direct3dLibrary();       ///< exports `D3D11CreateDevice`
[[nodiscard]] const char* dxgiLibrary();           ///< exports `CreateDXGIFactory`
[[nodiscard]] const char* kernelGraphicsLibrary(); ///< exports the `D3DKMT` functions
[[nodiscard]] const char* cudaDriverLibrary();     ///< exports the CUDA driver's functions
[[nodiscard]] const char* nvapiLibrary();          ///< exports `nvapi_QueryInterface`
[[nodiscard]] const char* nvapiOlderLibrary();     ///< what older drivers call it

/// Export the `ADL` functions, the first one found counts.
[[nodiscard]] std::span<const char* const> adlLibraries();
[[nodiscard]] const char* processorLibrary(); ///< exports `VexilCpuid`; only simulated machines have one

} // namespace vexil::platform
