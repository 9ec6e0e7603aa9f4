#pragma once

#include <string>

namespace vexil::host {

/// "GenuineIntel family 6 model 165 stepping 5": what the processor calls itself.
[[nodiscard]] std::string processorName();

} // namespace vexil::host
