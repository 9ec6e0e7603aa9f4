#include "core/shared_api.h"

// A library that offers the first export of a module and not the second.
extern "C" VEXIL_SHARED_API void* CreateModuleInstance() { return nullptr; }
