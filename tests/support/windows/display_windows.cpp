#include "support/display.h"

namespace vexil::tests {

bool provideDisplay() { return true; }

struct OwnDisplay::Display {};

OwnDisplay::OwnDisplay() = default;
OwnDisplay::~OwnDisplay() = default;
bool OwnDisplay::isThere() const { return true; }

} // namespace vexil::tests
