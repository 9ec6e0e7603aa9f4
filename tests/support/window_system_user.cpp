#include "support/window_system_user.h"

#include <cstdlib>
#include <stdexcept>
#include <sys/uio.h>
#include <thread>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace vexil::tests {

namespace {

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
    return {reply, &std::free};
}

xcb_extension_t& testExtension() {
    static char name[] = "XTEST";
    static xcb_extension_t extension{name, 0};
    return extension;
}

/// The extension's request FakeInput. Its major opcode and length are the connection's to fill in.
struct FakeInput {
    static constexpr std::uint8_t opcode = 2;

    std::uint8_t majorOpcode;
    std::uint8_t minorOpcode;
    std::uint16_t length;
    std::uint8_t event;
    std::uint8_t keyCode;
    std::uint8_t unused0[2];
    std::uint32_t delay;
    std::uint32_t root;
    std::uint8_t unused1[8];
    std::int16_t rootX;
    std::int16_t rootY;
    std::uint8_t unused2[7];
    std::uint8_t device;
};
static_assert(sizeof(FakeInput) == 36);

} // namespace

WindowSystemUser::WindowSystemUser(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr), xcb_disconnect) {
    if (xcb_connection_has_error(connection_.get()) != 0) {
        throw std::runtime_error("the display " + display + " cannot be reached");
    }
    const auto* const extension = xcb_get_extension_data(connection_.get(), &testExtension());
    if (extension == nullptr || extension->present == 0) {
        throw std::runtime_error("the display " + display + " has no test extension");
    }
}

/// 0 for none.
std::uint32_t WindowSystemUser::focused() const {
    auto* const connection = connection_.get();
    const auto focus = owned(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    return focus && focus->focus != XCB_INPUT_FOCUS_POINTER_ROOT ? focus->focus : 0;
}

bool WindowSystemUser::hasFocus(std::uint16_t width, std::uint16_t height) const {
    auto* const connection = connection_.get();
    const auto window = focused();
    const auto geometry = owned(
        window == 0 ? nullptr
                    : xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    return geometry && geometry->width == width && geometry->height == height;
}

bool WindowSystemUser::waitForFocus(std::uint16_t width, std::uint16_t height,
                                    std::chrono::milliseconds patience) const {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!hasFocus(width, height)) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

bool WindowSystemUser::press(std::uint32_t keySymbol) const {
    auto* const connection = connection_.get();
    const auto* const setup = xcb_get_setup(connection);
    const auto codes = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto mapping = owned(xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, codes), nullptr));
    if (!mapping) {
        return false;
    }
    const auto* const symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    for (int code = 0; code < codes; ++code) {
        if (symbols[code * mapping->keysyms_per_keycode] == keySymbol) {
            const auto keyCode = static_cast<std::uint8_t>(setup->min_keycode + code);
            send(XCB_KEY_PRESS, keyCode);
            send(XCB_KEY_RELEASE, keyCode);
            return xcb_flush(connection) > 0;
        }
    }
    return false;
}

void WindowSystemUser::resizeFocused(std::uint16_t width, std::uint16_t height) const {
    const std::uint32_t size[] = {width, height};
    xcb_configure_window(connection_.get(), focused(), XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         size);
    xcb_flush(connection_.get());
}

void WindowSystemUser::send(std::uint8_t event, std::uint8_t keyCode) const {
    FakeInput request{};
    request.event = event;
    request.keyCode = keyCode;
    // The two pieces in front are room for the connection's own words.
    iovec pieces[] = {{}, {}, {&request, sizeof request}};
    const xcb_protocol_request_t kind{1, &testExtension(), FakeInput::opcode, 1};
    xcb_send_request(connection_.get(), 0, pieces + 2, &kind);
}

} // namespace vexil::tests
