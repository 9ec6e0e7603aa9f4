#include "platform/swap_chain_window.h"

#include "window_under_test.h"

#include <gtest/gtest.h>

#include <QWindow>

#include <stdexcept>

namespace vexil::tests {
namespace {

TEST(SwapChainWindow, CanBeShownWhereThereIsADisplay) { EXPECT_TRUE(platform::canShowSwapChains()); }

TEST(SwapChainWindow, IsRefusedForANumberThatIsNoWindow) {
    EXPECT_THROW(platform::SwapChainWindow{0x7FFFFFF1}, std::runtime_error);
    EXPECT_THROW(platform::SwapChainWindow{0}, std::runtime_error);
}

TEST(SwapChainWindow, LeavesTheWindowToItsOwner) {
    WindowUnderTest window(64, 64);
    EXPECT_NE(window.swapChainWindow->handle(), nullptr);
    window.swapChainWindow.reset();
    // Still there: it can be taken again.
    EXPECT_NO_THROW(platform::SwapChainWindow{window.window->winId()});
}

} // namespace
} // namespace vexil::tests
