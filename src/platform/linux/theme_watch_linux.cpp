#include "theme_watch_linux.h"

#include "accessibility_bus_linux.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <utility>

namespace vexil::platform {

ThemeWatch::ThemeWatch(QObject& owner, std::function<void()> changed)
    : QObject(&owner), changed_(std::move(changed)) {
    QCoreApplication::instance()->installEventFilter(this);
    connectSettingsChanged(*this, SLOT(tell()));
}

bool ThemeWatch::eventFilter(QObject* watched, QEvent* event) {
    // The application gets one of them for each change; each widget gets another.
    if (watched == QCoreApplication::instance() && event->type() == QEvent::ApplicationPaletteChange) {
        tell();
    }
    return false;
}

void ThemeWatch::tell() { changed_(); }

} // namespace vexil::platform
