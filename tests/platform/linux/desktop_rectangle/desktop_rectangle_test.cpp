#include "platform/desktop_rectangle.h"
#include "support/virtual_display.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace vexil::platform {
namespace {

TEST(DesktopRectangle, IsThatOfTheXServersScreen) {
    const tests::VirtualDisplay display("1280x1024x24");
    ASSERT_TRUE(display.name().has_value()) << "Xvfb did not start";
    setenv("DISPLAY", display.name()->c_str(), 1);
    const auto desktop = findDesktop();
    ASSERT_TRUE(desktop.has_value());
    EXPECT_EQ(desktop->left, 0);
    EXPECT_EQ(desktop->top, 0);
    EXPECT_EQ(desktop->right, 1280);
    EXPECT_EQ(desktop->bottom, 1024);
    EXPECT_EQ(desktopRectangle().right, 1280);
}

TEST(DesktopRectangle, IsTheCommonSizeWhereThereIsNoDisplay) {
    for (const char* display : {"", ":59999", "nonsense"}) {
        setenv("DISPLAY", display, 1);
        EXPECT_FALSE(findDesktop().has_value()) << display;
        EXPECT_EQ(desktopRectangle().right, 1920) << display;
        EXPECT_EQ(desktopRectangle().bottom, 1080) << display;
    }
    unsetenv("DISPLAY");
    EXPECT_FALSE(findDesktop().has_value());
}

} // namespace
} // namespace vexil::platform
