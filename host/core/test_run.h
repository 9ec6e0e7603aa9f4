#pragma once

#include "core/test_message.h"
#include "core/test_result.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace vexil::host {

/// The record of one run of one test on one card.
struct TestRun {
    std::size_t card = 0; ///< index among the cards of the scan
    std::int32_t testId = 0;
    std::string name; ///< message key
    std::uint8_t result = core::TestResult::NotCompleted;
    std::string error; ///< what went wrong in the program itself, empty if nothing did
    std::vector<core::TestMessage> messages;
    std::vector<std::uint8_t> progress; ///< distinct values in the order sent
    std::chrono::system_clock::time_point startedAt;
    std::chrono::duration<double> duration{};
};

/// The name of a result in machine-readable output, "Unknown" for a number that is no result.
[[nodiscard]] const char* resultName(std::uint8_t result);
/// The key of its text for people.
[[nodiscard]] const char* resultKey(std::uint8_t result);

} // namespace vexil::host
