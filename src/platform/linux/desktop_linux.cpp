#include "platform/desktop.h"

#include "accessibility_bus_linux.h"
#include "theme_watch_linux.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtWidgets/QWidget>

#include <array>
#include <utility>

namespace vexil::platform {

namespace {

/// What Qt's palette has for each of Windows' system colours.
constexpr std::array paletteRoles = {
    QPalette::Button,          // 0 scroll bar
    QPalette::Window,          // 1 desktop
    QPalette::Highlight,       // 2 active caption
    QPalette::Button,          // 3 inactive caption
    QPalette::Window,          // 4 menu
    QPalette::Window,          // 5 window
    QPalette::WindowText,      // 6 window frame
    QPalette::WindowText,      // 7 menu text
    QPalette::WindowText,      // 8 window text
    QPalette::HighlightedText, // 9 caption text
    QPalette::Button,          // 10 active border
    QPalette::Button,          // 11 inactive border
    QPalette::Window,          // 12 workspace
    QPalette::Highlight,       // 13 highlight
    QPalette::HighlightedText, // 14 highlighted text
    QPalette::Button,          // 15 button face
    QPalette::Dark,            // 16 button shadow
    QPalette::WindowText,      // 17 disabled text, of the disabled group
    QPalette::ButtonText,      // 18 button text
    QPalette::ButtonText,      // 19 inactive caption text
    QPalette::Light,           // 20 button highlight
    QPalette::Shadow,          // 21 dark shadow
    QPalette::Midlight,        // 22 light
    QPalette::WindowText,      // 23 text of hints, which the dialogs show on the window's own ground
    QPalette::Window,          // 24 ground of hints
    QPalette::Window,          // 25 not in use
    QPalette::Link,            // 26 hot light
    QPalette::Highlight,       // 27 end of the active caption
    QPalette::Button,          // 28 end of the inactive caption
    QPalette::Highlight,       // 29 menu highlight
    QPalette::Window,          // 30 menu bar
};
static_assert(paletteRoles.size() == 31);
constexpr int disabledText = 17;

class LinuxDesktop final : public Desktop {
public:
    std::optional<std::uint32_t> highContrastFlags() override { return wantsHighContrast(); }

    std::uint32_t systemColor(int index) override {
        const auto group = index == disabledText ? QPalette::Disabled : QPalette::Active;
        const QColor color =
            QGuiApplication::palette().color(group, paletteRoles.at(static_cast<std::size_t>(index)));
        return static_cast<std::uint32_t>(color.red() | color.green() << 8 | color.blue() << 16);
    }

    std::optional<bool> screenReaderFlag() override { return announcedScreenReader(); }
    bool narratorRunning() override { return false; }

    void* primaryMonitor() override { return nullptr; }
    std::vector<Monitor> monitors() override { return {}; }

    void watchTheme(QObject& owner, std::function<void()> changed) override {
        new ThemeWatch(owner, std::move(changed)); // owned by its parent
    }

    // A window manager decides by itself who comes forward; no key would sway it.
    void sendKey(std::uint16_t, KeyMotion) override {}

    void bringForward(QWidget& window) override {
        window.raise();
        window.activateWindow();
    }
};

} // namespace

Desktop& systemDesktop() {
    static LinuxDesktop desktop;
    return desktop;
}

} // namespace vexil::platform
