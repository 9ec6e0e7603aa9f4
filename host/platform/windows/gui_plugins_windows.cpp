#include "host/platform/gui_plugins.h"

#include "host/platform/process.h"

namespace vexil::host::platform {

// Windows has a desktop even where nobody looks at it.
const char* guiPlugins(bool) { return ""; }

const char* guiFileName() { return "vxe-host-gui.dll"; }

std::string missingGuiPlugin(const std::filesystem::path& programFolder) {
    // Whoever sets these has plug-ins elsewhere, or wants others.
    for (const char* variable : {"QT_QPA_PLATFORM", "QT_PLUGIN_PATH", "QT_QPA_PLATFORM_PLUGIN_PATH"}) {
        if (environmentVariable(variable)) {
            return {};
        }
    }
    std::error_code ignored;
    const auto file = std::filesystem::path("platforms") / "qwindows.dll";
    return std::filesystem::exists(programFolder / file, ignored) ? std::string() : file.generic_string();
}

} // namespace vexil::host::platform
