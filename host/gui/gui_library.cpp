#include "host/gui/gui_library.h"

#include "host/gui/make_gui.h"

vexil::host::Gui* makeHostGui() { return vexil::host::makeGui().release(); }
