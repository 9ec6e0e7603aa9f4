#pragma once

#include "utils/parameters/test_parameter_switch.h"

namespace vexil::utils {

/// "BURN_IN": whether a test keeps the device at work for its own sake and tells its temperature.
class TestParameterBurnIn : public TestParameterSwitch {
public:
    TestParameterBurnIn()
        : TestParameterSwitch(
              {"BURN_IN", "BURN_IN_MODE", "BURN_IN_MODE_DESCRIPTION", "FALSE", 0, 4, "[TRUE:FALSE]"}) {}
};

} // namespace vexil::utils
