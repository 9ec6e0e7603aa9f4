#pragma once

#include <QtGui/QColor>

#include <array>
#include <vector>

namespace vexil::utils::accessibility {

/// False as well where the desktop does not tell.
[[nodiscard]] bool isHighContrastOn();
[[nodiscard]] bool isScreenReaderRunning();

/// The system colours that are read, by Windows' index and in this order. There is no colour 25.
inline constexpr std::array systemColorIndices = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                                  15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 26, 27, 28, 29, 30};
static_assert(systemColorIndices.size() == 30);

/// Opaque colours in the order of `systemColorIndices`.
[[nodiscard]] std::vector<QColor> readSystemColors();

} // namespace vexil::utils::accessibility
