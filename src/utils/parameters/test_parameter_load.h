#pragma once

#include "core/test_parameter.h"

#include <cstdint>

namespace vexil::utils {

/// "LOAD": how hard a test works the device, in percent.
class TestParameterLoad : public core::TestParameter {
public:
    TestParameterLoad();

    /// True for a text that begins with a whole number of 1 to 100.
    [[nodiscard]] bool isValid(std::string text) const override;

    [[nodiscard]] std::int32_t percent() const;
};

} // namespace vexil::utils
