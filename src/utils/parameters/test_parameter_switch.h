#pragma once

#include "core/test_parameter.h"

namespace vexil::utils {

/// A parameter that is either "TRUE" or "FALSE", in capitals.
class TestParameterSwitch : public core::TestParameter {
public:
    [[nodiscard]] bool isValid(std::string text) const override;

    /// Whether the value is "TRUE". An invalid value becomes "FALSE" with the question.
    [[nodiscard]] bool enabled();

protected:
    using TestParameter::TestParameter;
};

} // namespace vexil::utils
