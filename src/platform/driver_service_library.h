#pragma once

namespace vexil::platform {

/// Opens the library of the suite's driver service; null if there is none.
[[nodiscard]] void* openDriverServiceLibrary();

} // namespace vexil::platform
