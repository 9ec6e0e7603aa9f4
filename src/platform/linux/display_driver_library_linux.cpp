#include "platform/display_driver_library.h"

#include "platform/shared_library.h"

namespace vexil::platform {

// Drivers install into the system's folders here; there is no store of their own.
void* openDisplayDriverLibrary(const std::string& name) {
    return name.find('/') == std::string::npos ? openTrustedLibrary(name) : nullptr;
}

} // namespace vexil::platform
