#include "platform/desktop.h"
#include "private_bus.h"
#include "support/event_loop.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace vexil::platform {
namespace {

constexpr const char* portal = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* registry = "org.a11y.Bus";

QVariant wrapped(const QVariant& value) { return QVariant::fromValue(QDBusVariant(value)); }

class LinuxDesktopBus : public testing::Test {
protected:
    static void SetUpTestSuite() { bus = std::make_unique<test::PrivateBus>(); }
    static void TearDownTestSuite() { bus.reset(); }

    void SetUp() override { ASSERT_TRUE(bus->isThere()) << "dbus-daemon did not start"; }
    void TearDown() override {
        for (const char* service : {portal, registry}) {
            test::PrivateBus::stop(service);
        }
    }

    static std::unique_ptr<test::PrivateBus> bus;
    Desktop& desktop = systemDesktop();
    test::BusAnswers answers;
};

std::unique_ptr<test::PrivateBus> LinuxDesktopBus::bus;

TEST_F(LinuxDesktopBus, TellsNothingWhereNobodyAnswers) {
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(desktop.screenReaderFlag(), std::nullopt);
    EXPECT_EQ(desktop.highContrastFlags(), std::nullopt);
    EXPECT_LT(clock.elapsed(), 2000);
}

TEST_F(LinuxDesktopBus, HearsFromTheRegistryWhetherAScreenReaderRuns) {
    ASSERT_TRUE(bus->serve(registry, "/org/a11y/bus", answers));
    for (const bool enabled : {true, false}) {
        answers.values["org.a11y.Status ScreenReaderEnabled"] = wrapped(enabled);
        EXPECT_EQ(desktop.screenReaderFlag(), enabled);
    }
}

TEST_F(LinuxDesktopBus, HearsFromThePortalWhetherContrastIsWanted) {
    ASSERT_TRUE(bus->serve(portal, portalPath, answers));
    for (const std::uint32_t contrast : {1U, 0U}) {
        answers.values["org.freedesktop.appearance contrast"] = wrapped(wrapped(contrast)); // as portals do
        EXPECT_EQ(desktop.highContrastFlags(), contrast);
    }
}

TEST_F(LinuxDesktopBus, AsksOlderDesktopsForTheirOwnSetting) {
    ASSERT_TRUE(bus->serve(portal, portalPath, answers));
    answers.values["org.gnome.desktop.a11y.interface high-contrast"] = wrapped(wrapped(true));
    EXPECT_EQ(desktop.highContrastFlags(), 1U);
}

TEST_F(LinuxDesktopBus, TellsAChangeOfSettings) {
    ASSERT_TRUE(bus->serve(portal, portalPath, answers));
    int changes = 0;
    {
        QObject owner;
        desktop.watchTheme(owner, [&changes] { ++changes; });
        test::PrivateBus::signal(portal, portalPath, "org.freedesktop.portal.Settings", "SettingChanged");
        EXPECT_TRUE(test::runEventsUntil([&] { return changes == 1; }));
    }
    test::PrivateBus::signal(portal, portalPath, "org.freedesktop.portal.Settings", "SettingChanged");
    test::runEvents(std::chrono::milliseconds(50));
    EXPECT_EQ(changes, 1) << "the owner is gone";
}

TEST_F(LinuxDesktopBus, SurvivesTheEndOfTheBus) {
    ASSERT_EQ(desktop.screenReaderFlag(), std::nullopt);
    bus->end();
    ASSERT_TRUE(test::runEventsUntil([] { return !QDBusConnection::sessionBus().isConnected(); }));
    QObject owner;
    desktop.watchTheme(owner, [] {});
    EXPECT_EQ(desktop.screenReaderFlag(), std::nullopt);
    EXPECT_EQ(desktop.highContrastFlags(), std::nullopt);
}

TEST(LinuxDesktop, TellsAChangeOfThePaletteOnce) {
    int changes = 0;
    QObject owner;
    systemDesktop().watchTheme(owner, [&changes] { ++changes; });
    const QWidget window;
    const QPalette before = QGuiApplication::palette();
    QPalette palette = before;
    palette.setColor(QPalette::WindowText, QColor(1, 2, 3));
    QGuiApplication::setPalette(palette);
    test::runEvents(std::chrono::milliseconds(20));
    EXPECT_EQ(changes, 1);
    QGuiApplication::setPalette(before);
}

TEST(LinuxDesktop, TakesItsColoursFromThePalette) {
    const QPalette before = QGuiApplication::palette();
    QPalette palette = before;
    palette.setColor(QPalette::Active, QPalette::WindowText, QColor(0x11, 0x22, 0x33));
    palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x44, 0x55, 0x66));
    palette.setColor(QPalette::Active, QPalette::Button, QColor(0x77, 0x88, 0x99));
    QGuiApplication::setPalette(palette);
    EXPECT_EQ(systemDesktop().systemColor(8), 0x332211U);
    EXPECT_EQ(systemDesktop().systemColor(17), 0x665544U);
    EXPECT_EQ(systemDesktop().systemColor(15), 0x998877U);
    EXPECT_NO_THROW(systemDesktop().systemColor(30));
    QGuiApplication::setPalette(before);
}

TEST(LinuxDesktop, HasNeitherNarratorNorMonitorHandles) {
    EXPECT_FALSE(systemDesktop().narratorRunning());
    EXPECT_EQ(systemDesktop().primaryMonitor(), nullptr);
    EXPECT_TRUE(systemDesktop().monitors().empty());
}

TEST(LinuxDesktop, RaisesAndActivatesAWindow) {
    QWidget below;
    QWidget above;
    below.show();
    above.show();
    above.activateWindow();
    ASSERT_TRUE(test::runEventsUntil([&] { return above.isActiveWindow(); }));
    systemDesktop().sendKey(97, KeyMotion::press);
    systemDesktop().bringForward(below);
    EXPECT_TRUE(test::runEventsUntil([&] { return below.isActiveWindow(); }));
}

} // namespace
} // namespace vexil::platform
