#include "platform/desktop.h"

#include <windows.h>

#include <QtWidgets/QWidget>

namespace vexil::platform {

namespace {

Monitor monitorOf(HMONITOR handle, const RECT& place) {
    return {handle, static_cast<std::int32_t>(place.left), static_cast<std::int32_t>(place.top),
            static_cast<std::int32_t>(place.right), static_cast<std::int32_t>(place.bottom)};
}

BOOL CALLBACK addMonitor(HMONITOR handle, HDC, RECT* place, LPARAM list) {
    reinterpret_cast<std::vector<Monitor>*>(list)->push_back(monitorOf(handle, *place));
    return TRUE;
}

class WindowsDesktop final : public Desktop {
public:
    std::optional<std::uint32_t> highContrastFlags() override {
        HIGHCONTRASTW record{};
        static_assert(sizeof(record) == 16);
        record.cbSize = sizeof(record);
        if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(record), &record, 0) == 0) {
            return std::nullopt;
        }
        return record.dwFlags;
    }

    std::uint32_t systemColor(int index) override { return GetSysColor(index); }

    std::optional<bool> screenReaderFlag() override {
        BOOL running = FALSE;
        if (SystemParametersInfoW(SPI_GETSCREENREADER, 0, &running, 0) == 0) {
            return std::nullopt;
        }
        return running != FALSE;
    }

    bool narratorRunning() override {
        HANDLE mutex = OpenMutexW(READ_CONTROL, FALSE, L"NarratorRunning");
        if (mutex == nullptr) {
            return false;
        }
        CloseHandle(mutex);
        return true;
    }

    void* primaryMonitor() override {
        return MonitorFromWindow(GetDesktopWindow(), MONITOR_DEFAULTTOPRIMARY);
    }

    std::vector<Monitor> monitors() override {
        std::vector<Monitor> list;
        EnumDisplayMonitors(nullptr, nullptr, addMonitor, reinterpret_cast<LPARAM>(&list));
        return list;
    }

    // Windows tells it by a message, which the dialogs' event filter sees.
    void watchTheme(QObject&, std::function<void()>) override {}

    void sendKey(std::uint16_t virtualKey, KeyMotion motion) override {
        INPUT record{};
        record.type = INPUT_KEYBOARD;
        record.ki.wVk = virtualKey;
        record.ki.dwFlags = motion == KeyMotion::release ? KEYEVENTF_KEYUP : 0;
        SendInput(1, &record, sizeof(record));
    }

    void bringForward(QWidget& window) override {
        SetForegroundWindow(reinterpret_cast<HWND>(window.winId()));
    }
};

} // namespace

Desktop& systemDesktop() {
    static WindowsDesktop desktop;
    return desktop;
}

} // namespace vexil::platform
