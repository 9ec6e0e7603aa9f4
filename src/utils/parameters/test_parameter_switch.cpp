#include "utils/parameters/test_parameter_switch.h"

namespace vexil::utils {

bool TestParameterSwitch::isValid(std::string text) const { return text == "TRUE" || text == "FALSE"; }

bool TestParameterSwitch::enabled() {
    if (!isValid(value_)) {
        value_ = "FALSE";
    }
    return value_ == "TRUE";
}

} // namespace vexil::utils
