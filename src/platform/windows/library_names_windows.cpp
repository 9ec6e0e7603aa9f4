#include "platform/library_names.h"

namespace vexil::platform {

const char* direct3dLibrary() { return "d3d11.dll"; }
const char* dxgiLibrary() { return "dxgi.dll"; }
const char* kernelGraphicsLibrary() { return "gdi32.dll"; }
const char* cudaDriverLibrary() { return "nvcuda.dll"; }
const char* nvapiLibrary() { return "nvapi64.dll"; }
const char* nvapiOlderLibrary() { return "nvapi.dll"; }

std::span<const char* const> adlLibraries() {
    static constexpr const char* names[] = {"atiadlxx.dll", "atiadlxy.dll"};
    return names;
}
const char* processorLibrary() { return "vexil_processor.dll"; }

} // namespace vexil::platform
