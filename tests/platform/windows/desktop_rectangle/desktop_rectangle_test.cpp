#include "platform/desktop_rectangle.h"

#include "module/video_card/test_parameter_screen_dimensions.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace vexil::platform {
namespace {

TEST(DesktopRectangle, IsThatOfThePrimaryDisplay) {
    const auto desktop = findDesktop();
    ASSERT_TRUE(desktop.has_value());
    EXPECT_EQ(desktop->left, 0);
    EXPECT_EQ(desktop->top, 0);
    EXPECT_EQ(desktop->right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(desktop->bottom, GetSystemMetrics(SM_CYSCREEN));
}

TEST(DesktopRectangle, BoundsTheSizesOfWindows) {
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    const std::string range = module::video_card::TestParameterScreenDimensions().description().range;
    EXPECT_EQ(range.find("|1024x768|") != std::string::npos, width >= 1024 && height >= 768) << range;
    EXPECT_EQ(range.find("|1920x1080|") != std::string::npos, width >= 1920 && height >= 1080) << range;
    EXPECT_EQ(range.find("|3840x2160|") != std::string::npos, width >= 3840 && height >= 2160) << range;
}

} // namespace
} // namespace vexil::platform
