#pragma once

#include <QCoreApplication>
#include <QMetaObject>

#include <functional>
#include <thread>

namespace vexil::tests {

/// Runs the function on a worker while this thread is the GUI thread, as a host does.
inline void onWorker(const std::function<void()>& function) {
    std::thread worker([&] {
        function();
        QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit,
                                  Qt::QueuedConnection);
    });
    QCoreApplication::exec();
    worker.join();
}

} // namespace vexil::tests
