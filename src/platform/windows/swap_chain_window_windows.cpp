#include "platform/swap_chain_window.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace vexil::platform {

// The window's number is its handle.
struct SwapChainWindow::Window {
    void* handle;
};

SwapChainWindow::SwapChainWindow(std::uintptr_t nativeWindow)
    : window_(std::make_unique<Window>(Window{reinterpret_cast<void*>(nativeWindow)})) {
    if (IsWindow(static_cast<HWND>(window_->handle)) == FALSE) {
        throw std::runtime_error("The number " + std::to_string(nativeWindow) + " is no window");
    }
}

SwapChainWindow::~SwapChainWindow() = default;

void* SwapChainWindow::handle() const { return window_->handle; }

bool canShowSwapChains() { return true; }

} // namespace vexil::platform
