#include "utils/interaction/gui_custom_input_interaction.h"

#include "utils/accessibility/dpi.h"
#include "utils/interaction/gui_thread.h"
#include "utils/interaction/input_request_closer.h"

#include <QtCore/QPointer>
#include <QtCore/QScopeGuard>
#include <QtWidgets/QApplication>

namespace vexil::utils {

namespace {

/// How a host names the window that it lends to tests.
constexpr const char* hostWindowName = "Default - Window";
/// Where no window tells a resolution.
constexpr std::int32_t usualDpi = 96;

/// Shows every window of that name; the last of them is the host's.
QWidget* showHostWindow() {
    QWidget* last = nullptr;
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->accessibleName() == QLatin1String(hostWindowName)) {
            widget->show();
            widget->raise();
            widget->activateWindow();
            last = widget;
        }
    }
    return last;
}

} // namespace

GuiCustomInputInteraction::GuiCustomInputInteraction(AbstractWidgetWrapper& widget, bool suppressed,
                                                     bool modal)
    : GuiInputInteraction(suppressed, modal), widget_(&widget) {}

void GuiCustomInputInteraction::present() {
    runOnGuiThread([this] { show(); });
}

void GuiCustomInputInteraction::show() {
    InputRequestCloser closer;
    const QPointer<QWidget> hostWindow = showHostWindow();
    if (hostWindow) {
        bringForward(*hostWindow);
    }
    const auto* dpi = accessibility::Dpi::instance();
    // Also when the widget throws: the window is on loan for the question only.
    const auto hideHostWindow = qScopeGuard([&hostWindow] {
        if (hostWindow) {
            hostWindow->hide();
        }
    });
    result_ = widget_->showWidget(hostWindow, &closer, dpi != nullptr ? dpi->logicalDpi() : usualDpi);
}

} // namespace vexil::utils
