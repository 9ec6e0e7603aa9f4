#pragma once

#include "core/test.h"

#include <cstdint>
#include <memory>

namespace vexil::host::tests {

/// The ids by what their tests do in a scripted module.
struct FakeId {
    static constexpr std::int32_t passes = 1;        ///< with progress and "TOTAL_SURFACES_TESTED: 50/50"
    static constexpr std::int32_t fails = 3;         ///< with a message
    static constexpr std::int32_t notCompleted = 11; ///< with a message of three lines
    static constexpr std::int32_t keepsMemory = 12;
    static constexpr std::int32_t throws = 13;
    static constexpr std::int32_t waitsForCancel = 14; ///< and ends with 5
    static constexpr std::int32_t notSupported = 15;   ///< by result, although it is offered
    static constexpr std::int32_t unavailable = 16;
    static constexpr std::int32_t interrupts = 17; ///< sends the process one interrupt, then waits for cancel
    static constexpr std::int32_t interruptsTwice = 18; ///< sends two and goes on for ever
    static constexpr std::int32_t hasParameter = 5;     ///< "DURATION" of 1 to 9999; says its value
    static constexpr std::int32_t thermalTool = 90;     ///< 45 degrees
    static constexpr std::int32_t neverMade = 21;
};

/// Null for an id that is not in the catalogue, and for `neverMade`. Not scripted, every test passes.
[[nodiscard]] std::unique_ptr<core::Test> makeFakeTest(std::int32_t id, bool scripted);

} // namespace vexil::host::tests
