#include "utils/parameters/test_parameter_load.h"

#include "utils/parameters/number_text.h"

#include <exception>

namespace vexil::utils {

TestParameterLoad::TestParameterLoad()
    : TestParameter({"LOAD", "LOAD_LEVEL", "LOAD_LEVEL_DESCRIPTION", "100", 2, 4, "[1:100]"}) {}

bool TestParameterLoad::isValid(std::string text) const {
    try {
        // 0 and the negative numbers wrap to far above 99.
        return static_cast<std::uint32_t>(integerOf(text)) - 1U <= 99U;
    } catch (const std::exception&) {
        return false;
    }
}

std::int32_t TestParameterLoad::percent() const {
    try {
        return integerOf(value_);
    } catch (const std::exception&) {
        return integerOf(description_.defaultValue);
    }
}

} // namespace vexil::utils
