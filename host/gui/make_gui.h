#pragma once

#include "host/core/gui.h"

#include <memory>

namespace vexil::host {

/// The GUI of this build; null if it was built without Qt.
[[nodiscard]] std::unique_ptr<Gui> makeGui();

} // namespace vexil::host
