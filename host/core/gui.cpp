#include "host/core/gui.h"

#include "host/platform/process.h"
#include "platform/desktop_rectangle.h"

namespace vexil::host {

std::optional<std::string> chosenGuiPlugins() {
    auto plugins = platform::environmentVariable("QT_QPA_PLATFORM");
    return plugins && !plugins->empty() ? plugins : std::nullopt;
}

bool displayCanBeReached() {
    if (const auto plugins = chosenGuiPlugins()) {
        return !plugins->starts_with("offscreen") && !plugins->starts_with("minimal");
    }
    return vexil::platform::findDesktop().has_value();
}

} // namespace vexil::host
