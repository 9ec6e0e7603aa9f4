#include "host/platform/display_controllers.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace vexil::host::platform {

bool hasDisplayController() {
    /// The class code of PCI's display controllers is the first byte of three.
    constexpr const char* displayClass = "0x03";
    std::error_code error;
    for (const auto& device : std::filesystem::directory_iterator("/sys/bus/pci/devices", error)) {
        std::string code;
        std::ifstream(device.path() / "class") >> code;
        if (code.starts_with(displayClass)) {
            return true;
        }
    }
    return false;
}

} // namespace vexil::host::platform
