#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

struct xcb_connection_t;

namespace vexil::tests {

/// What a user does to the windows of an X server. Keys are pressed as a hand presses them: the server's test
/// extension gives them to whatever window has the keyboard. Linux only.
class WindowSystemUser {
public:
    /// `display` as DISPLAY has it. Throws `std::runtime_error` if it cannot be reached.
    explicit WindowSystemUser(const std::string& display);

    /// Waits until a window of this size, and no other, has the keyboard. False if that does not happen.
    [[nodiscard]] bool waitForFocus(std::uint16_t width, std::uint16_t height,
                                    std::chrono::milliseconds patience) const;
    /// Presses and lets go of the key with that symbol. False if the keyboard has none.
    [[nodiscard]] bool press(std::uint32_t keySymbol) const;
    /// Gives the window that has the keyboard another size.
    void resizeFocused(std::uint16_t width, std::uint16_t height) const;

private:
    [[nodiscard]] std::uint32_t focused() const;
    [[nodiscard]] bool hasFocus(std::uint16_t width, std::uint16_t height) const;
    void send(std::uint8_t event, std::uint8_t keyCode) const;

    std::shared_ptr<xcb_connection_t> connection_;
};

} // namespace vexil::tests
