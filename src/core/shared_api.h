#pragma once

// Marks what a shared library of the suite offers to the others. Everything else is hidden. The build defines
// it where the compiler needs an attribute; Windows libraries list their exports in a module-definition file
// instead.
#ifndef VEXIL_SHARED_API
#define VEXIL_SHARED_API
#endif
