#include "platform/direct3d_environment.h"

namespace vexil::platform {

const char* prepareDirect3D() { return nullptr; }

} // namespace vexil::platform
