#include "host/gui/make_gui.h"

namespace vexil::host {

std::unique_ptr<Gui> makeGui() { return nullptr; }

} // namespace vexil::host
