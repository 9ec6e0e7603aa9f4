#include "platform/direct3d_environment.h"

#include "platform/shared_library.h"

#include <cstdint>
#include <cstdlib>

namespace vexil::platform {

namespace {

constexpr const char* windowSystemLibrary = "libSDL2-2.0.so.0";
constexpr const char* headlessWindowSystemLibrary = "libvexil_headless_sdl.so";

/// `SDL_INIT_VIDEO` of SDL's public interface.
constexpr std::uint32_t videoSubsystem = 0x20;

/// True once the window system is up on an X11 display. Without one the Direct3D library would crash in it.
bool startWindowSystem() {
    const char* display = std::getenv("DISPLAY");
    if (display == nullptr || *display == '\0') {
        return false;
    }
    void* library = openTrustedLibrary(windowSystemLibrary);
    if (library == nullptr) {
        return false;
    }
    setenv("SDL_VIDEODRIVER", "x11", 0);
    const auto start = reinterpret_cast<int (*)(std::uint32_t)>(librarySymbol(library, "SDL_InitSubSystem"));
    return start != nullptr && start(videoSubsystem) == 0;
}

const char* prepare() {
    setenv("DXVK_WSI_DRIVER", "SDL2", 0);
    // The library would otherwise leave log files and a cache of shaders in the user's working directory.
    setenv("DXVK_STATE_CACHE", "disable", 0);
    setenv("DXVK_LOG_PATH", "none", 0);
    setenv("DXVK_LOG_LEVEL", "none", 0);
    // Without a display the second one answers to the window system's name, so that the Direct3D library
    // finds it: "no displays". The real one would crash there.
    const bool ready = startWindowSystem() || openTrustedLibrary(headlessWindowSystemLibrary) != nullptr;
    return ready ? nullptr : headlessWindowSystemLibrary;
}

} // namespace

const char* prepareDirect3D() {
    static const char* const missing = prepare();
    return missing;
}

} // namespace vexil::platform
