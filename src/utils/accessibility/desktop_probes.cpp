#include "utils/accessibility/desktop_probes.h"

#include "utils/accessibility/dialog_environment.h"

namespace vexil::utils::accessibility {

bool isHighContrastOn() {
    const auto flags = dialogEnvironment().desktop().highContrastFlags();
    return flags.has_value() && (*flags & 1U) != 0;
}

bool isScreenReaderRunning() {
    auto& desktop = dialogEnvironment().desktop();
    return desktop.screenReaderFlag().value_or(false) || desktop.narratorRunning();
}

std::vector<QColor> readSystemColors() {
    auto& desktop = dialogEnvironment().desktop();
    std::vector<QColor> colors;
    colors.reserve(systemColorIndices.size());
    for (const int index : systemColorIndices) {
        const std::uint32_t color = desktop.systemColor(index);
        colors.emplace_back(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                            static_cast<int>(color >> 16 & 0xFF));
    }
    return colors;
}

} // namespace vexil::utils::accessibility
