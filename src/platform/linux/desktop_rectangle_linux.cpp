#include "platform/desktop_rectangle.h"

#include "platform/shared_library.h"

#include <cstdlib>
#include <memory>
#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace vexil::platform {

namespace {

/// Opened when it is needed: a machine that only runs tests off the screen need not have it.
constexpr const char* displayLibrary = "libxcb.so.1";
constexpr const char* monitorLibrary = "libxcb-randr.so.0";

struct DisplayCalls {
    decltype(&xcb_connect) connect = nullptr;
    decltype(&xcb_connection_has_error) hasError = nullptr;
    decltype(&xcb_get_setup) setup = nullptr;
    decltype(&xcb_setup_roots_iterator) roots = nullptr;
    decltype(&xcb_screen_next) nextScreen = nullptr;
    decltype(&xcb_disconnect) disconnect = nullptr;
};

struct MonitorCalls {
    decltype(&xcb_randr_query_version) queryVersion = nullptr;
    decltype(&xcb_randr_query_version_reply) versionReply = nullptr;
    decltype(&xcb_randr_get_monitors) getMonitors = nullptr;
    decltype(&xcb_randr_get_monitors_reply) monitorsReply = nullptr;
    decltype(&xcb_randr_get_monitors_monitors_iterator) monitors = nullptr;
    decltype(&xcb_randr_monitor_info_next) nextMonitor = nullptr;
};

template <typename Reply>
using OwnedReply = std::unique_ptr<Reply, decltype(&std::free)>;

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

bool load(MonitorCalls& calls) {
    void* library = openTrustedLibrary(monitorLibrary);
    return library != nullptr && resolve(library, "xcb_randr_query_version", calls.queryVersion) &&
           resolve(library, "xcb_randr_query_version_reply", calls.versionReply) &&
           resolve(library, "xcb_randr_get_monitors", calls.getMonitors) &&
           resolve(library, "xcb_randr_get_monitors_reply", calls.monitorsReply) &&
           resolve(library, "xcb_randr_get_monitors_monitors_iterator", calls.monitors) &&
           resolve(library, "xcb_randr_monitor_info_next", calls.nextMonitor);
}

/// Of the primary monitor, or the first where none is said to be that. Nothing before RandR 1.5, which
/// brought monitors.
std::optional<DesktopRectangle> primaryMonitor(xcb_connection_t* connection, xcb_window_t root) {
    MonitorCalls calls;
    if (!load(calls)) {
        return std::nullopt;
    }
    const OwnedReply<xcb_randr_query_version_reply_t> version(
        calls.versionReply(connection, calls.queryVersion(connection, 1, 5), nullptr), std::free);
    if (version == nullptr || version->major_version < 1 ||
        (version->major_version == 1 && version->minor_version < 5)) {
        return std::nullopt;
    }
    constexpr std::uint8_t onlyActive = 1;
    const OwnedReply<xcb_randr_get_monitors_reply_t> reply(
        calls.monitorsReply(connection, calls.getMonitors(connection, root, onlyActive), nullptr), std::free);
    if (reply == nullptr) {
        return std::nullopt;
    }
    std::optional<DesktopRectangle> found;
    for (auto monitors = calls.monitors(reply.get()); monitors.rem > 0; calls.nextMonitor(&monitors)) {
        const auto& monitor = *monitors.data;
        if (!found || monitor.primary != 0) {
            found = DesktopRectangle{0, 0, monitor.width, monitor.height};
        }
        if (monitor.primary != 0) {
            break;
        }
    }
    return found;
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
    // The screen of X11 is the box around all monitors.
    const DesktopRectangle screen{0, 0, screens.data->width_in_pixels, screens.data->height_in_pixels};
    return primaryMonitor(connection.get(), screens.data->root).value_or(screen);
}

} // namespace vexil::platform
