#pragma once

#include "core/shared_api.h"

extern "C" {
/// The program, in a library of its own: what it needs is loaded with it, so that `vxe-host` can say what is
/// missing.
VEXIL_SHARED_API int vexilHostMain(int count, char** values);
}
