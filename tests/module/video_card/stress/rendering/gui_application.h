#pragma once

#include <QGuiApplication>

namespace vexil::tests {

/// Makes the program's one application, which needs no display, on the first call.
inline void startGuiApplication() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "tests";
    static char* arguments[] = {name, nullptr};
    static QGuiApplication application(count, arguments);
}

} // namespace vexil::tests
