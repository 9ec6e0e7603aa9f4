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

/// Without a bus the library would start one of its own for this process alone.
bool hasBus() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus");
}

/// The first value of the answer, out of all its wrappings. Invalid without one.
QVariant ask(QDBusMessage question) {
    if (!hasBus()) {
        return {};
    }
    question.setAutoStartService(false);
    const auto answer = QDBusConnection::sessionBus().call(question, QDBus::Block, patienceMilliseconds);
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
    if (hasBus()) {
        QDBusConnection::sessionBus().connect(portalService, portalPath, portalSettings, "SettingChanged",
                                              &receiver, slot);
    }
}

} // namespace vexil::platform
