#include "platform/library_names.h"

#include "platform/wide_text.h"

#include <windows.h>

#include <string>

namespace vexil::platform {

namespace {

/// Empty if the process does not hold the library.
std::string pathOfLoaded(const wchar_t* name) {
    HMODULE library = GetModuleHandleW(name);
    wchar_t path[MAX_PATH];
    const DWORD length = library == nullptr ? 0 : GetModuleFileNameW(library, path, MAX_PATH);
    return length < MAX_PATH ? toUtf8({path, length}) : std::string();
}

} // namespace

const char* direct3dLibrary() { return "d3d11.dll"; }
const char* dxgiLibrary() { return "dxgi.dll"; }

const char* kernelGraphicsLibrary() {
    // Every process holds the system's gdi32 from its start, so a simulated machine cannot bring one of that
    // name. It brings one of its own name, which counts once the host has loaded it, by its path: a bare name
    // is found in the system's folder only.
    static const std::string simulated = pathOfLoaded(L"vexil_kernel_graphics.dll");
    return simulated.empty() ? "gdi32.dll" : simulated.c_str();
}

const char* cudaDriverLibrary() { return "nvcuda.dll"; }
const char* nvapiLibrary() { return "nvapi64.dll"; }
const char* nvapiOlderLibrary() { return "nvapi.dll"; }

std::span<const char* const> adlLibraries() {
    static constexpr const char* names[] = {"atiadlxx.dll", "atiadlxy.dll"};
    return names;
}
const char* processorLibrary() { return "vexil_processor.dll"; }

} // namespace vexil::platform
