#pragma once

#include <optional>
#include <string>

namespace vexil::platform {

/// A variable of the process's environment, name and value in UTF-8; nothing where it is absent.
[[nodiscard]] std::optional<std::string> environmentVariable(const std::string& name);

} // namespace vexil::platform
