#include "platform/desktop_rectangle.h"

#include <windows.h>

namespace vexil::platform {

std::optional<DesktopRectangle> findDesktop() {
    RECT rectangle{};
    if (GetWindowRect(GetDesktopWindow(), &rectangle) == FALSE) {
        return std::nullopt;
    }
    return DesktopRectangle{rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
}

} // namespace vexil::platform
