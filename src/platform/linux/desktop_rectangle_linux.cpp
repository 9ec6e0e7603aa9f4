#include "platform/desktop_rectangle.h"

#include "platform/shared_library.h"

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace vexil::platform {

namespace {

/// Opened when it is needed: a machine that only runs tests off the screen need not have it.
constexpr const char* displayLibrary = "libxcb.so.1";

struct DisplayCalls {
    decltype(&xcb_connect) connect = nullptr;
    decltype(&xcb_connection_has_error) hasError = nullptr;
    decltype(&xcb_get_setup) setup = nullptr;
    decltype(&xcb_setup_roots_iterator) roots = nullptr;
    decltype(&xcb_screen_next) nextScreen = nullptr;
    decltype(&xcb_disconnect) disconnect = nullptr;
};

template <typename Function>
bool resolve(void* library, const char* symbol, Function& function) {
    function = reinterpret_cast<Function>(librarySymbol(library, symbol));
    return function != nullptr;
}

bool load(DisplayCalls& calls) {
    // Kept open: it is the same library that a dialog of the process uses.
    void* library = openTrustedLibrary(displayLibrary);
    return library != nullptr && resolve(library, "xcb_connect", calls.connect) &&
           resolve(library, "xcb_connection_has_error", calls.hasError) &&
           resolve(library, "xcb_get_setup", calls.setup) &&
           resolve(library, "xcb_setup_roots_iterator", calls.roots) &&
           resolve(library, "xcb_screen_next", calls.nextScreen) &&
           resolve(library, "xcb_disconnect", calls.disconnect);
}

} // namespace

std::optional<DesktopRectangle> findDesktop() {
    const char* display = std::getenv("DISPLAY");
    DisplayCalls calls;
    if (display == nullptr || *display == '\0' || !load(calls)) {
        return std::nullopt;
    }
    int preferred = 0;
    // A connection that failed is an object too, and has to be given back.
    const std::unique_ptr<xcb_connection_t, decltype(calls.disconnect)> connection(
        calls.connect(nullptr, &preferred), calls.disconnect);
    if (calls.hasError(connection.get()) != 0) {
        return std::nullopt;
    }
    auto screens = calls.roots(calls.setup(connection.get()));
    for (int skipped = 0; skipped < preferred && screens.rem > 1; ++skipped) {
        calls.nextScreen(&screens);
    }
    if (screens.rem == 0) {
        return std::nullopt;
    }
    return DesktopRectangle{0, 0, screens.data->width_in_pixels, screens.data->height_in_pixels};
}

} // namespace vexil::platform
