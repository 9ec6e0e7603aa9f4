#pragma once

#include "utils/parameters/test_parameter_switch.h"

namespace vexil::utils {

/// "INFINITE": whether a test begins again when its time is up, until somebody stops it.
class TestParameterInfinite : public TestParameterSwitch {
public:
    TestParameterInfinite()
        : TestParameterSwitch(
              {"INFINITE", "INFINITE", "INFINITE_DESCRIPTION", "FALSE", 0, 4, "[TRUE:FALSE]"}) {}
};

} // namespace vexil::utils
