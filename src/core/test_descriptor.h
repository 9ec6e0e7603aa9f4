#pragma once

#include "core/test_parameter.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vexil::core {

/// The plain record from which each test constructs its `Test` base. Texts are message keys.
/// Parameters live in the `Test` object, so `parameters` stays empty; so do the three fields without a
/// reader.
struct TestDescriptor {
    std::int32_t id = 0;
    std::string name;
    std::string tooltip;
    std::vector<TestParameterDescription> parameters;
    std::string group;
    std::int32_t groupRank = 0;
    std::string reservedText1;
    std::string reservedText2;
    std::int32_t reservedNumber = 0;
};

} // namespace vexil::core
