#pragma once

#include <cstdint>
#include <memory>

namespace vexil::platform {

/// A window of the program as Direct3D knows windows. The native window is its owner's and outlives this
/// object, which outlives every swap chain on it.
class SwapChainWindow {
public:
    /// `nativeWindow` is the number by which the window system knows the window (`QWidget::winId`). Throws
    /// `std::runtime_error` if it is none, or if there is no display that Direct3D can show on.
    explicit SwapChainWindow(std::uintptr_t nativeWindow);
    SwapChainWindow(const SwapChainWindow&) = delete;
    SwapChainWindow& operator=(const SwapChainWindow&) = delete;
    ~SwapChainWindow();

    /// What `DXGI_SWAP_CHAIN_DESC::OutputWindow` takes: an HWND of this home's Direct3D.
    [[nodiscard]] void* handle() const;

private:
    struct Window;
    std::unique_ptr<Window> window_;
};

/// Whether this process can show a window with Direct3D in it. The first use of Direct3D in a process settles
/// it.
[[nodiscard]] bool canShowSwapChains();

} // namespace vexil::platform
