#include "platform/display_driver_library.h"

#include "platform/shared_library.h"

#include <array>
#include <filesystem>
#include <system_error>

namespace vexil::platform {

namespace {

/// Where distributions and drivers' installers put them. The loader's own search also goes by the environment
/// of the user, and is not asked.
constexpr std::array folders = {
    "/usr/lib/x86_64-linux-gnu", "/usr/lib64", "/lib64", "/usr/lib",
    "/usr/local/nvidia/lib64", // NVIDIA's containers
    "/run/opengl-driver/lib",  // NixOS
};

} // namespace

void* openDisplayDriverLibrary(const std::string& name) {
    if (name.empty() || name.find('/') != std::string::npos) {
        return nullptr;
    }
    // The one that the process holds: the driver's, or that of a simulated machine.
    if (void* loaded = loadedLibrary(name)) {
        return loaded;
    }
    for (const std::filesystem::path folder : folders) {
        std::error_code error;
        if (!std::filesystem::exists(folder / name, error)) {
            continue;
        }
        if (void* library = openLibraryPath(folder / name)) {
            return library;
        }
    }
    return nullptr;
}

} // namespace vexil::platform
