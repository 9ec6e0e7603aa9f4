#pragma once

#include <string>

namespace vexil::simulated {

/// The folder of the library that this code is linked into, UTF-8; empty if it cannot be told.
[[nodiscard]] std::string ownFolder();

} // namespace vexil::simulated
