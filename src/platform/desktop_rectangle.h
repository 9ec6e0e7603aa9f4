#pragma once

#include <cstdint>
#include <optional>

namespace vexil::platform {

/// In pixels. Right and bottom are the first column and row outside.
struct DesktopRectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

/// What stands for a desktop on a machine that shows none: the size that most displays have.
inline constexpr DesktopRectangle desktopWithoutDisplay{0, 0, 1920, 1080};

/// The size of the primary display as it is now, with its left top corner at 0, 0; of the whole screen on an
/// X11 server that tells no monitors. Nothing where no display can be reached, and so no window can be seen.
[[nodiscard]] std::optional<DesktopRectangle> findDesktop();

/// The same, and `desktopWithoutDisplay` where there is none.
[[nodiscard]] inline DesktopRectangle desktopRectangle() {
    return findDesktop().value_or(desktopWithoutDisplay);
}

} // namespace vexil::platform
