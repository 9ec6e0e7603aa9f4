#include "platform/desktop.h"
#include "support/event_loop.h"

#include <windows.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <algorithm>

namespace vexil::platform {
namespace {

TEST(WindowsDesktop, TellsWhetherAScreenReaderHasAnnouncedItself) {
    for (const BOOL announced : {TRUE, FALSE}) {
        ASSERT_NE(SystemParametersInfoW(SPI_SETSCREENREADER, static_cast<UINT>(announced), nullptr, 0),
                  FALSE);
        EXPECT_EQ(systemDesktop().screenReaderFlag(), announced != FALSE);
    }
}

TEST(WindowsDesktop, FindsNarratorByItsMutexAndDoesNotKeepIt) {
    EXPECT_FALSE(systemDesktop().narratorRunning());
    HANDLE mutex = CreateMutexW(nullptr, FALSE, L"NarratorRunning");
    ASSERT_NE(mutex, nullptr);
    EXPECT_TRUE(systemDesktop().narratorRunning());
    CloseHandle(mutex);
    EXPECT_FALSE(systemDesktop().narratorRunning()) << "the last handle is closed";
}

TEST(WindowsDesktop, ReadsTheSystemsColours) {
    const int index = COLOR_WINDOWTEXT;
    const COLORREF before = GetSysColor(index);
    const COLORREF color = RGB(0x11, 0x22, 0x33);
    ASSERT_NE(SetSysColors(1, &index, &color), FALSE);
    EXPECT_EQ(systemDesktop().systemColor(8), 0x332211U);
    SetSysColors(1, &index, &before);
}

TEST(WindowsDesktop, AsksForHighContrastWithARecordThatTheSystemTakes) {
    HIGHCONTRASTW record{};
    record.cbSize = sizeof(record);
    ASSERT_NE(SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(record), &record, 0), FALSE);
    EXPECT_EQ(systemDesktop().highContrastFlags(), record.dwFlags);
}

TEST(WindowsDesktop, ListsTheMonitorsWithThePrimaryOneAmongThem) {
    const auto monitors = systemDesktop().monitors();
    const auto primary = std::ranges::find(monitors, systemDesktop().primaryMonitor(), &Monitor::handle);
    ASSERT_NE(primary, monitors.end());
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    ASSERT_NE(GetMonitorInfoW(static_cast<HMONITOR>(primary->handle), &info), FALSE);
    EXPECT_NE(info.dwFlags & MONITORINFOF_PRIMARY, 0U);
    EXPECT_EQ(primary->left, info.rcMonitor.left);
    EXPECT_EQ(primary->top, info.rcMonitor.top);
    EXPECT_EQ(primary->right, info.rcMonitor.right);
    EXPECT_EQ(primary->bottom, info.rcMonitor.bottom);
}

TEST(WindowsDesktop, PressesAndReleasesAKey) {
    const auto isDown = [] { return (GetAsyncKeyState(VK_NUMPAD1) & 0x8000) != 0; };
    ASSERT_FALSE(isDown());
    systemDesktop().sendKey(97, KeyMotion::press);
    EXPECT_TRUE(isDown());
    systemDesktop().sendKey(97, KeyMotion::release);
    EXPECT_FALSE(isDown());
}

TEST(WindowsDesktop, BringsAWindowBeforeTheOthers) {
    QWidget below;
    QWidget above;
    below.show();
    above.show();
    SetForegroundWindow(reinterpret_cast<HWND>(above.winId()));
    ASSERT_TRUE(
        test::runEventsUntil([&] { return GetForegroundWindow() == reinterpret_cast<HWND>(above.winId()); }));
    systemDesktop().bringForward(below);
    EXPECT_TRUE(
        test::runEventsUntil([&] { return GetForegroundWindow() == reinterpret_cast<HWND>(below.winId()); }));
}

} // namespace
} // namespace vexil::platform

// With windows of the system's own, which the shared main does without.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
