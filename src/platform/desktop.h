#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class QByteArray;
class QObject;
class QWidget;

namespace vexil::platform {

enum class KeyMotion { press, release };

/// A monitor in the pixels of the whole desktop. Right and bottom are the first column and row outside.
struct Monitor {
    void* handle = nullptr; ///< the system's own, borrowed
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

/// What the user's desktop tells dialogs and does for them. GUI thread only.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Bit 0 is set while high contrast is on; nothing if the desktop does not tell.
    virtual std::optional<std::uint32_t> highContrastFlags() = 0;
    /// `index` is one of Windows' system colours, 0 to 30. Red in the low byte, then green, then blue.
    virtual std::uint32_t systemColor(int index) = 0;
    /// What the desktop says about a screen reader; nothing if it does not tell.
    virtual std::optional<bool> screenReaderFlag() = 0;
    /// Windows' own reader does not set the flag.
    virtual bool narratorRunning() = 0;

    /// The monitor handles that "shcore.dll" takes; null and none where there is no such library.
    virtual void* primaryMonitor() = 0;
    virtual std::vector<Monitor> monitors() = 0;

    /// Calls `changed` at each change of theme while `owner` lives, where no native message tells it.
    virtual void watchTheme(QObject& owner, std::function<void()> changed) = 0;

    /// Puts one input record for a key of Windows' numbering into the user's input, where that allows a
    /// process of the background to come forward.
    virtual void sendKey(std::uint16_t virtualKey, KeyMotion motion) = 0;
    virtual void bringForward(QWidget& window) = 0;
};

[[nodiscard]] Desktop& systemDesktop();

} // namespace vexil::platform
