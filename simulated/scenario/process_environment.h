#pragma once

#include <optional>
#include <string>

namespace vexil::simulated {

/// A variable of the process's environment in UTF-8; nothing where it is absent.
[[nodiscard]] std::optional<std::string> environmentVariable(const char* name);

} // namespace vexil::simulated
