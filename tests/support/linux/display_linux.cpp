#include "support/display.h"

#include "support/virtual_display.h"

#include <cstdlib>

namespace vexil::tests {

bool provideDisplay() {
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    const char* display = std::getenv("DISPLAY");
    if (display != nullptr && *display != '\0') {
        return true;
    }
    static const VirtualDisplay own("1280x1024x24");
    if (!own.name()) {
        return false;
    }
    setenv("DISPLAY", own.name()->c_str(), 1);
    return true;
}

struct OwnDisplay::Display {
    VirtualDisplay display{"1920x1080x24"};
};

OwnDisplay::OwnDisplay() : display_(std::make_unique<Display>()) {
    if (isThere()) {
        setenv("DISPLAY", display_->display.name()->c_str(), 1);
    }
}

OwnDisplay::~OwnDisplay() = default;

bool OwnDisplay::isThere() const { return display_->display.name().has_value(); }

} // namespace vexil::tests
