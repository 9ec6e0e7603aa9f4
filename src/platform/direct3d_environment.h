#pragma once

namespace vexil::platform {

/// Makes the process ready for Direct3D, before its libraries are loaded for the first time. Calling it again
/// does nothing. Null if it is ready, else the file name of the library that it lacks: Direct3D would end the
/// process then.
[[nodiscard]] const char* prepareDirect3D();

} // namespace vexil::platform
