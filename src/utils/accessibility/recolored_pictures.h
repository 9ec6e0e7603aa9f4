#pragma once

#include "utils/accessibility/style_sheet.h"

#include <string>

class QObject;

namespace vexil::utils::accessibility {

/// Gives the pictures of the rule, its "image" and "icon", the colour `color`: each becomes a copy in the
/// folder for temporary files that lives as long as `owner`. A picture that cannot be copied stays what it
/// was.
void recolorPictures(StyleRule& rule, const std::string& color, QObject& owner);

} // namespace vexil::utils::accessibility
