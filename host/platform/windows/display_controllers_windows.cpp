#include "host/platform/display_controllers.h"

#include <windows.h>

#include <setupapi.h>

namespace vexil::host::platform {

namespace {

/// GUID_DEVCLASS_DISPLAY of the system's headers, which need a library of definitions for it.
constexpr GUID displayClass = {0x4d36e968, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};

} // namespace

bool hasDisplayController() {
    const HDEVINFO devices = SetupDiGetClassDevsW(&displayClass, L"PCI", nullptr, DIGCF_PRESENT);
    if (devices == INVALID_HANDLE_VALUE) {
        return false;
    }
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    const bool found = SetupDiEnumDeviceInfo(devices, 0, &device) != 0;
    SetupDiDestroyDeviceInfoList(devices);
    return found;
}

} // namespace vexil::host::platform
