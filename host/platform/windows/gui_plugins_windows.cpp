#include "host/platform/gui_plugins.h"

#include "host/platform/process.h"

namespace vexil::host::platform {

// Windows has a desktop even where nobody looks at it.
const char* guiPlugins(bool) { return ""; }

const char* guiFileName() { return "vxe-host-gui.dll"; }

std::filesystem::path neededGuiPlugin() {
    // Whoever sets these has plug-ins elsewhere, or wants others.
    for (const char* variable : {"QT_QPA_PLATFORM", "QT_PLUGIN_PATH", "QT_QPA_PLATFORM_PLUGIN_PATH"}) {
        if (environmentVariable(variable)) {
            return {};
        }
    }
    return std::filesystem::path("platforms") / "qwindows.dll";
}

} // namespace vexil::host::platform
