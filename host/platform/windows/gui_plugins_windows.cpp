#include "host/platform/gui_plugins.h"

namespace vexil::host::platform {

// Windows has a desktop even where nobody looks at it.
const char* guiPlugins(bool) { return ""; }

} // namespace vexil::host::platform
