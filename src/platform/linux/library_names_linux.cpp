#include "platform/library_names.h"

namespace vexil::platform {

const char* direct3dLibrary() { return "libdxvk_d3d11.so.0"; }
const char* dxgiLibrary() { return "libdxvk_dxgi.so.0"; }
const char* kernelGraphicsLibrary() { return "libvexil_kernel_graphics.so"; }
const char* cudaDriverLibrary() { return "libcuda.so.1"; }
const char* nvapiLibrary() { return "libnvidia-api.so.1"; }
const char* nvapiOlderLibrary() { return "libnvidia-api.so"; }

std::span<const char* const> adlLibraries() {
    static constexpr const char* names[] = {"libvexil_adl.so"};
    return names;
}
const char* processorLibrary() { return "libvexil_processor.so"; }

} // namespace vexil::platform
