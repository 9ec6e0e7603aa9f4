#pragma once

#include <string>

namespace vexil::platform {

/// The path in UTF-8 with "\\" between its names, of which either slash is taken; empty for null.
[[nodiscard]] std::string namespacePath(const wchar_t* nameSpace);

/// The namespace of the machine.
[[nodiscard]] bool isMachineNamespace(const std::string& path);
/// Whether the namespace is there without having been made: that of the machine, and the one around it.
[[nodiscard]] bool isBuiltInNamespace(const std::string& path);

} // namespace vexil::platform
