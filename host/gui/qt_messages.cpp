#include "host/gui/qt_messages.h"

#include <QString>

#include <atomic>
#include <iostream>

namespace vexil::host {

namespace {

std::atomic<bool> warningsAreShown = false;

void write(QtMsgType type, const QMessageLogContext&, const QString& text) {
    const bool trivial = type == QtDebugMsg || type == QtInfoMsg;
    if (trivial || (type == QtWarningMsg && !warningsAreShown)) {
        return;
    }
    std::cerr << ("vxe-host: " + text.toStdString() + '\n') << std::flush;
}

} // namespace

QtMessages::QtMessages() : before_(qInstallMessageHandler(write)) { warningsAreShown = false; }

QtMessages::~QtMessages() { qInstallMessageHandler(before_); }

void QtMessages::showWarnings() { warningsAreShown = true; }

} // namespace vexil::host
