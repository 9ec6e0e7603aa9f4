#include "platform/direct3d_environment.h"

namespace vexil::platform {

void prepareDirect3D() {}

} // namespace vexil::platform
