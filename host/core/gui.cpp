#include "host/core/gui.h"

#include "host/platform/process.h"
#include "platform/desktop_rectangle.h"

namespace vexil::host {

bool displayCanBeReached() {
    // The user's own choice of Qt's plug-in for windows goes before what is there.
    const auto plugins = platform::environmentVariable("QT_QPA_PLATFORM");
    if (plugins && !plugins->empty()) {
        return !plugins->starts_with("offscreen") && !plugins->starts_with("minimal");
    }
    return vexil::platform::findDesktop().has_value();
}

} // namespace vexil::host
