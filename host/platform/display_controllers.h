#pragma once

namespace vexil::host::platform {

/// Whether the operating system lists a display controller. Asked before the module is loaded, which decides
/// by what it then finds itself.
[[nodiscard]] bool hasDisplayController();

} // namespace vexil::host::platform
