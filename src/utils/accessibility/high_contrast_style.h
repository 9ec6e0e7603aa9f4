#pragma once

#include "utils/accessibility/style_sheet.h"

#include <string>
#include <vector>

namespace vexil::utils::accessibility {

/// The user's colours under the names that the rules know, each as "#rrggbb".
struct HighContrastStyle {
    std::string desktopColor;
    std::string faceColor;
    std::string buttonTextColor;
    std::string disabledColor;
    std::string infoTextColor;
    std::string highlightColor;
    std::string highlightTextColor;
    std::string textColor;
};

/// Puts the user's colours into the rule by what its selector says. Properties that have nothing to do with
/// contrast stay.
void applyHighContrastRules(StyleRule& rule, const HighContrastStyle& style);

} // namespace vexil::utils::accessibility
