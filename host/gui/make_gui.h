#pragma once

#include "host/core/gui.h"

#include <memory>

namespace vexil::host {

[[nodiscard]] std::unique_ptr<Gui> makeGui();

} // namespace vexil::host
