#include "core/test_parameter.h"

#include <utility>

namespace vexil::core {

TestParameter::TestParameter(TestParameterDescription description)
    : description_(std::move(description)), value_(description_.defaultValue) {}

TestParameterDescription TestParameter::description() const { return description_; }

void TestParameter::setValue(std::string text) {
    if (isValid(text)) {
        value_ = std::move(text);
    }
}

} // namespace vexil::core
