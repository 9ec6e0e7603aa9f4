#include "platform/desktop_rectangle.h"

#include <windows.h>

namespace vexil::platform {

DesktopRectangle desktopRectangle() {
    RECT rectangle{};
    if (GetWindowRect(GetDesktopWindow(), &rectangle) == FALSE) {
        return desktopWithoutDisplay;
    }
    return {rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
}

} // namespace vexil::platform
