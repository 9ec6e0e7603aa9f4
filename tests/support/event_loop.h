#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

#include <chrono>

namespace vexil::test {

/// Lets events happen for as long.
inline void runEvents(std::chrono::milliseconds duration) {
    QElapsedTimer clock;
    for (clock.start(); std::chrono::milliseconds(clock.elapsed()) < duration;) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Lets events happen until `condition` holds. False if it does not in `limit`.
template <typename Condition>
bool runEventsUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(5)) {
    QElapsedTimer clock;
    for (clock.start(); !condition();) {
        if (std::chrono::milliseconds(clock.elapsed()) > limit) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

} // namespace vexil::test
