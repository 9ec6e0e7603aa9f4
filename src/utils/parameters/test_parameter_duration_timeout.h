#pragma once

#include "core/test_parameter.h"

namespace vexil::utils {

/// "DURATION": how long a test runs, in minutes.
class TestParameterDurationTimeout : public core::TestParameter {
public:
    TestParameterDurationTimeout();

    /// True for a text that begins with a number not below 0 and not above 9999. The range text begins at 1
    /// and yet 0 is valid: hosts use it for the shortest run.
    [[nodiscard]] bool isValid(std::string text) const override;

    [[nodiscard]] float minutes() const;
};

} // namespace vexil::utils
