#pragma once

namespace vexil::platform {

/// Makes the process ready for Direct3D, before its libraries are loaded for the first time. Calling it again
/// does nothing.
void prepareDirect3D();

} // namespace vexil::platform
