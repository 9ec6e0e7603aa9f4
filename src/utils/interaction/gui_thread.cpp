#include "utils/interaction/gui_thread.h"

#include "utils/accessibility/dialog_environment.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaObject>
#include <QtWidgets/QWidget>

#include <cstdint>
#include <exception>

namespace vexil::utils {

namespace {

/// The left arrow: a key that changes nothing in the window that has the focus.
constexpr std::uint16_t leftArrowKey = 0x25;

} // namespace

void runOnGuiThread(const std::function<void()>& function) {
    QCoreApplication* application = QCoreApplication::instance();
    if (application == nullptr) {
        return;
    }
    // Qt's event loop lets no exception pass.
    std::exception_ptr failure;
    QMetaObject::invokeMethod(
        application,
        [&] {
            try {
                function();
            } catch (...) {
                failure = std::current_exception();
            }
        },
        Qt::BlockingQueuedConnection);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void bringForward(QWidget& window) {
    auto& desktop = accessibility::dialogEnvironment().desktop();
    // A process in the background may take the foreground once the last key came from it.
    desktop.sendKey(leftArrowKey, platform::KeyMotion::press);
    desktop.sendKey(leftArrowKey, platform::KeyMotion::release);
    desktop.bringForward(window);
}

} // namespace vexil::utils
