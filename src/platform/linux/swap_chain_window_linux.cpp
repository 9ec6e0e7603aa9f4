#include "platform/swap_chain_window.h"

#include "platform/direct3d_environment.h"
#include "platform/shared_library.h"

#include <stdexcept>

namespace vexil::platform {

namespace {

/// A window for Direct3D is one of SDL's, which takes a window of X11 that somebody else made. SDL was
/// started on the display when Direct3D was prepared; without a display its stand-in is loaded, which has no
/// windows.
struct WindowSystem {
    using SetHint = int (*)(const char*, const char*);
    using CreateWindowFrom = void* (*)(const void*);
    using DestroyWindow = void (*)(void*);

    SetHint setHint = nullptr;
    CreateWindowFrom createWindowFrom = nullptr;
    DestroyWindow destroyWindow = nullptr;

    [[nodiscard]] bool complete() const {
        return setHint != nullptr && createWindowFrom != nullptr && destroyWindow != nullptr;
    }
};

template <typename Function>
Function symbolOf(void* library, const char* name) {
    return reinterpret_cast<Function>(librarySymbol(library, name));
}

WindowSystem windowSystem() {
    void* const library = prepareDirect3D() == nullptr ? loadedLibrary("libSDL2-2.0.so.0") : nullptr;
    if (library == nullptr) {
        return {};
    }
    return {symbolOf<WindowSystem::SetHint>(library, "SDL_SetHint"),
            symbolOf<WindowSystem::CreateWindowFrom>(library, "SDL_CreateWindowFrom"),
            symbolOf<WindowSystem::DestroyWindow>(library, "SDL_DestroyWindow")};
}

/// Xlib, which SDL has brought. Opaque here: display and attributes are only handed through.
class X11 {
public:
    X11() : library_(openTrustedLibrary("libX11.so.6")) {}
    X11(const X11&) = delete;
    X11& operator=(const X11&) = delete;
    ~X11() {
        if (library_ != nullptr) {
            closeLibrary(library_);
        }
    }

    /// Asked on a connection of its own, since Xlib's answer to an unknown window is the end of the program
    /// unless somebody takes the error.
    [[nodiscard]] bool hasWindow(std::uintptr_t window) const {
        using ErrorHandler = int (*)(void*, void*);
        const auto open = symbol<void* (*)(const char*)>("XOpenDisplay");
        const auto close = symbol<int (*)(void*)>("XCloseDisplay");
        const auto exchangeHandler = symbol<ErrorHandler (*)(ErrorHandler)>("XSetErrorHandler");
        using GetAttributes = int (*)(void*, unsigned long, void*);
        const auto getAttributes = symbol<GetAttributes>("XGetWindowAttributes");
        if (open == nullptr || close == nullptr || exchangeHandler == nullptr || getAttributes == nullptr) {
            return false;
        }
        void* const display = open(nullptr);
        if (display == nullptr) {
            return false;
        }
        // More than XWindowAttributes takes.
        alignas(16) unsigned char attributes[512];
        const auto before = exchangeHandler([](void*, void*) { return 0; });
        const bool found = getAttributes(display, window, attributes) != 0;
        exchangeHandler(before);
        close(display);
        return found;
    }

private:
    template <typename Function>
    [[nodiscard]] Function symbol(const char* name) const {
        return library_ == nullptr ? nullptr : symbolOf<Function>(library_, name);
    }

    void* library_;
};

} // namespace

struct SwapChainWindow::Window {
    WindowSystem system;
    void* handle = nullptr;
};

SwapChainWindow::SwapChainWindow(std::uintptr_t nativeWindow)
    : window_(std::make_unique<Window>(Window{windowSystem(), nullptr})) {
    const auto& system = window_->system;
    if (!system.complete()) {
        throw std::runtime_error("There is no display to show a window on");
    }
    if (!X11().hasWindow(nativeWindow)) {
        throw std::runtime_error("The window is not one of the display's");
    }
    system.setHint("SDL_VIDEO_FOREIGN_WINDOW_VULKAN", "1");
    window_->handle = system.createWindowFrom(reinterpret_cast<const void*>(nativeWindow));
    if (window_->handle == nullptr) {
        throw std::runtime_error("The window system does not take the window");
    }
}

SwapChainWindow::~SwapChainWindow() { window_->system.destroyWindow(window_->handle); }

void* SwapChainWindow::handle() const { return window_->handle; }

bool canShowSwapChains() { return windowSystem().complete(); }

} // namespace vexil::platform
