#include "platform/driver_service_library.h"

#include "platform/shared_library.h"

namespace vexil::platform {

// The service works with root's rights, so here it is taken from where the module stands, never from the
// working directory.
void* openDriverServiceLibrary() { return openTrustedLibrary("libNorvaneDiagnosticsDriverService.so"); }

} // namespace vexil::platform
