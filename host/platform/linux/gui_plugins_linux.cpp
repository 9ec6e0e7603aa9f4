#include "host/platform/gui_plugins.h"

namespace vexil::host::platform {

// Direct3D draws in windows of X11, so Wayland's own are of no use. With the second name Qt starts even where
// the first one's libraries are missing.
const char* guiPlugins(bool visible) { return visible ? "xcb;offscreen" : "offscreen"; }

const char* guiFileName() { return "libvxe-host-gui.so"; }

// Qt and its plug-ins are the system's here.
std::filesystem::path neededGuiPlugin() { return {}; }

} // namespace vexil::host::platform
