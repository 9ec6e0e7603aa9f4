#include "platform/desktop_rectangle.h"

#include "module/video_card/test_parameter_screen_dimensions.h"
#include "support/virtual_display.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

namespace vexil::platform {
namespace {

/// A client that tells the server which monitors its screen is made of.
class MonitorLayout {
public:
    explicit MonitorLayout(const std::string& display)
        : connection_(xcb_connect(display.c_str(), nullptr)),
          root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root) {
        const std::unique_ptr<xcb_randr_query_version_reply_t, decltype(&std::free)> version(
            xcb_randr_query_version_reply(connection_, xcb_randr_query_version(connection_, 1, 5), nullptr),
            std::free);
    }
    MonitorLayout(const MonitorLayout&) = delete;
    MonitorLayout& operator=(const MonitorLayout&) = delete;
    ~MonitorLayout() { xcb_disconnect(connection_); }

    /// Whether the server took it. A monitor without an output, beside the one that the server makes of its
    /// screen.
    bool define(const std::string& name, bool primary, std::uint16_t width, std::uint16_t height) {
        SetMonitor request{};
        request.header.window = root_;
        request.monitor.name = atom(name);
        request.monitor.primary = primary ? 1 : 0;
        request.monitor.width = width;
        request.monitor.height = height;
        const xcb_void_cookie_t cookie{send(request)};
        const std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error(
            xcb_request_check(connection_, cookie), std::free);
        return error == nullptr && xcb_connection_has_error(connection_) == 0;
    }

private:
    struct SetMonitor {
        xcb_randr_set_monitor_request_t header;
        xcb_randr_monitor_info_t monitor;
    };

    /// What `xcb_randr_set_monitor` is for, which in version 1.15 sends a length that it never set.
    unsigned send(SetMonitor& request) {
        const xcb_protocol_request_t protocol{1, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
        iovec parts[3] = {{}, {}, {&request, sizeof(request)}}; // the library puts its own before ours
        return xcb_send_request(connection_, XCB_REQUEST_CHECKED, parts + 2, &protocol);
    }

    xcb_atom_t atom(const std::string& name) {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(
                connection_,
                xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
                nullptr),
            std::free);
        return reply->atom;
    }

    xcb_connection_t* connection_;
    xcb_window_t root_;
};

/// From now on the server is the one of this process.
testing::AssertionResult isShown(const tests::VirtualDisplay& display) {
    if (!display.name()) {
        return testing::AssertionFailure() << "Xvfb did not start";
    }
    setenv("DISPLAY", display.name()->c_str(), 1);
    return testing::AssertionSuccess();
}

/// What is found on a server with a smaller monitor on the left and a larger one beside it.
std::optional<DesktopRectangle> desktopOfTwoMonitors(bool rightIsPrimary) {
    const tests::VirtualDisplay display("2304x1024x24");
    if (const auto shown = isShown(display); !shown) {
        ADD_FAILURE() << shown.message();
        return std::nullopt;
    }
    MonitorLayout layout(*display.name());
    EXPECT_TRUE(layout.define("left", false, 1024, 768));
    EXPECT_TRUE(layout.define("right", rightIsPrimary, 1280, 1024));
    return findDesktop();
}

TEST(DesktopRectangle, IsThatOfTheXServersScreenAndBoundsTheSizesOfWindows) {
    const tests::VirtualDisplay display("1280x1024x24");
    ASSERT_TRUE(isShown(display));
    const auto desktop = findDesktop();
    ASSERT_TRUE(desktop.has_value());
    EXPECT_EQ(desktop->left, 0);
    EXPECT_EQ(desktop->top, 0);
    EXPECT_EQ(desktop->right, 1280);
    EXPECT_EQ(desktop->bottom, 1024);
    EXPECT_EQ(desktopRectangle().right, 1280);
    EXPECT_EQ(module::video_card::TestParameterScreenDimensions().description().range,
              "[400x400|1024x768|1280x1024|FULL_SCREEN]");
}

TEST(DesktopRectangle, IsThatOfThePrimaryMonitorOfSeveral) {
    const auto desktop = desktopOfTwoMonitors(true);
    ASSERT_TRUE(desktop.has_value());
    EXPECT_EQ(desktop->left, 0);
    EXPECT_EQ(desktop->top, 0);
    EXPECT_EQ(desktop->right, 1280);
    EXPECT_EQ(desktop->bottom, 1024);
}

TEST(DesktopRectangle, IsThatOfTheFirstMonitorWhereNoneIsPrimary) {
    const auto desktop = desktopOfTwoMonitors(false);
    ASSERT_TRUE(desktop.has_value());
    EXPECT_EQ(desktop->right, 1024);
    EXPECT_EQ(desktop->bottom, 768);
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
