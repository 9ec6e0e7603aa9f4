#pragma once

#include <QtCore/QProcess>
#include <QtCore/QThread>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>
#include <QtDBus/QDBusVirtualObject>

#include <map>
#include <memory>
#include <string>

namespace vexil::test {

/// Answers for one object of a service: what a caller finds under the texts that it asks with.
class BusAnswers : public QDBusVirtualObject {
public:
    std::map<std::string, QVariant> values; ///< by "group name", as the two arguments are

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const auto arguments = message.arguments();
        if (arguments.size() != 2) {
            return false;
        }
        const auto value =
            values.find((arguments[0].toString() + ' ' + arguments[1].toString()).toStdString());
        return value != values.end() && connection.send(message.createReply(value->second));
    }
};

/// A session bus of the test's own, and on it services that answer from another thread, as real ones do from
/// another process. It stands in for the session's bus from its making on: one for a whole program, which
/// connects only once.
class PrivateBus {
public:
    PrivateBus() {
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address"});
        if (daemon_.waitForStarted() && daemon_.waitForReadyRead()) {
            address_ = daemon_.readLine().trimmed();
            qputenv("DBUS_SESSION_BUS_ADDRESS", address_);
        }
        services_.start();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        services_.quit();
        services_.wait();
        end();
    }

    void end() {
        daemon_.terminate();
        daemon_.waitForFinished();
    }

    [[nodiscard]] bool isThere() const { return !address_.isEmpty(); }

    /// True if the service could take its name. `answers` outlives the service.
    bool serve(const QString& service, const QString& path, BusAnswers& answers) {
        answers.moveToThread(&services_);
        QDBusConnection connection = QDBusConnection::connectToBus(QString::fromLatin1(address_), service);
        return connection.registerVirtualObject(path, &answers) && connection.registerService(service);
    }

    static void stop(const QString& service) { QDBusConnection::disconnectFromBus(service); }

    /// As the service would.
    static void signal(const QString& service, const QString& path, const QString& interface,
                       const QString& name) {
        auto message = QDBusMessage::createSignal(path, interface, name);
        message << "a.group"
                << "a-name" << QVariant::fromValue(QDBusVariant(1));
        QDBusConnection(service).send(message);
    }

private:
    QProcess daemon_;
    QByteArray address_;
    QThread services_;
};

} // namespace vexil::test
