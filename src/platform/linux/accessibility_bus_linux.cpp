#include "accessibility_bus_linux.h"

#include <QtCore/QFileInfo>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>

namespace vexil::platform {

namespace {

/// The dialogs ask on the GUI thread, before they are shown.
constexpr int patienceMilliseconds = 250;

constexpr const char* portalService = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* portalSettings = "org.freedesktop.portal.Settings";

/// Nothing without a bus: the library would start one for this process alone. Nothing either after the bus
/// has ended, which the library does not take.
std::optional<QDBusConnection> sessionBus() {
    if (!qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") &&
        !QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus")) {
        return std::nullopt;
    }
    const auto bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

/// The first value of the answer, out of all its wrappings. Invalid without one.
QVariant ask(QDBusMessage question) {
    const auto bus = sessionBus();
    if (!bus) {
        return {};
    }
    question.setAutoStartService(false);
    const auto answer = bus->call(question, QDBus::Block, patienceMilliseconds);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
        return {};
    }
    QVariant value = answer.arguments().constFirst();
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

QVariant setting(const char* group, const char* name) {
    auto question = QDBusMessage::createMethodCall(portalService, portalPath, portalSettings, "Read");
    question << group << name;
    return ask(question);
}

} // namespace

std::optional<bool> announcedScreenReader() {
    auto question = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus",
                                                   "org.freedesktop.DBus.Properties", "Get");
    question << "org.a11y.Status"
             << "ScreenReaderEnabled";
    const auto enabled = ask(question);
    return enabled.isValid() ? std::optional(enabled.toBool()) : std::nullopt;
}

std::optional<bool> wantsHighContrast() {
    // 0 is no preference, 1 is more contrast. Desktops of before that setting have GNOME's own.
    const auto contrast = setting("org.freedesktop.appearance", "contrast");
    const auto older =
        contrast.isValid() ? contrast : setting("org.gnome.desktop.a11y.interface", "high-contrast");
    return older.isValid() ? std::optional(older.toUInt() == 1) : std::nullopt;
}

void connectSettingsChanged(QObject& receiver, const char* slot) {
    if (auto bus = sessionBus()) {
        bus->connect(portalService, portalPath, portalSettings, "SettingChanged", &receiver, slot);
    }
}

} // namespace vexil::platform
