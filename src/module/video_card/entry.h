#pragma once

#include "core/module.h"
#include "core/shared_api.h"

extern "C" {
/// The module, owned by the caller until it gives it back through `DestroyModuleInstance`; null where there
/// is not enough memory.
VEXIL_SHARED_API vexil::core::Module* CreateModuleInstance();
/// Does nothing for null.
VEXIL_SHARED_API void DestroyModuleInstance(vexil::core::Module* module);
}
