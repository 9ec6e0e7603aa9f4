#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vexil::simulated {

class FieldReader;

/// What a test must say of every card of a scenario that supports it: the proof that it sees the fault, or
/// that it must not see one.
struct RequiredOutcome {
    std::int32_t test = 0;             ///< id
    std::uint8_t result = 0;           ///< a `core::TestResult`
    std::vector<std::string> messages; ///< their keys, whole or up to a '*', in order
    std::vector<std::string> settings; ///< "KEY=VALUE", how the test is to be run
};

/// Reads the field "required" of a scenario.
[[nodiscard]] std::vector<RequiredOutcome> readRequiredOutcomes(FieldReader& scenario);

} // namespace vexil::simulated
