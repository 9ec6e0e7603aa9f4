#pragma once

#include "core/shared_api.h"
#include "host/core/gui.h"

extern "C" {
/// The GUI, owned by the caller.
VEXIL_SHARED_API vexil::host::Gui* makeHostGui();
}
