#include "core/shared_api.h"
#include "host/asking_module/asking_module.h"

extern "C" {

VEXIL_SHARED_API vexil::core::Module* CreateModuleInstance() { return new vexil::host::tests::AskingModule; }

VEXIL_SHARED_API void DestroyModuleInstance(vexil::core::Module* module) { delete module; }
}
