#include "platform/swap_chain_window.h"

namespace vexil::platform {

// The window's number is its handle.
struct SwapChainWindow::Window {
    void* handle;
};

SwapChainWindow::SwapChainWindow(std::uintptr_t nativeWindow)
    : window_(std::make_unique<Window>(Window{reinterpret_cast<void*>(nativeWindow)})) {}

SwapChainWindow::~SwapChainWindow() = default;

void* SwapChainWindow::handle() const { return window_->handle; }

bool canShowSwapChains() { return true; }

} // namespace vexil::platform
