#pragma once

#include <filesystem>
#include <string>

namespace vexil::host::platform {

/// Qt's plug-ins for windows on this system, in the order in which they are tried: those that show windows,
/// or those that need no display. Empty where Qt's own choice is right.
[[nodiscard]] const char* guiPlugins(bool visible);

/// The file of the library that holds the GUI, beside the program.
[[nodiscard]] const char* guiFileName();

/// The plug-in without which Qt would end the process, if it is not where this program keeps it; else empty.
[[nodiscard]] std::string missingGuiPlugin(const std::filesystem::path& programFolder);

} // namespace vexil::host::platform
