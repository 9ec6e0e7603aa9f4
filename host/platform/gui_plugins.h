#pragma once

#include <filesystem>

namespace vexil::host::platform {

/// Qt's plug-ins for windows on this system, in the order in which they are tried: those that show windows,
/// or those that need no display. Empty where Qt's own choice is right.
[[nodiscard]] const char* guiPlugins(bool visible);

/// The file of the library that holds the GUI, beside the program.
[[nodiscard]] const char* guiFileName();

/// The plug-in without which Qt would end the process, as a path from the program's folder. Empty where Qt
/// and its plug-ins are the system's, or the user's choice.
[[nodiscard]] std::filesystem::path neededGuiPlugin();

} // namespace vexil::host::platform
