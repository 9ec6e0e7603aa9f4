#pragma once

namespace vexil::host::platform {

/// Qt's plug-ins for windows on this system, in the order in which they are tried: those that show windows,
/// or those that need no display. Empty where Qt's own choice is right.
[[nodiscard]] const char* guiPlugins(bool visible);

} // namespace vexil::host::platform
