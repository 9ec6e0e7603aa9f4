#pragma once

#include <string>

namespace vexil::platform {

/// Opens a library that a display driver installed, and nothing else of that name: from the system's folder
/// or the driver's own. A name that holds a path separator is refused. Null if there is none.
[[nodiscard]] void* openDisplayDriverLibrary(const std::string& name);

} // namespace vexil::platform
