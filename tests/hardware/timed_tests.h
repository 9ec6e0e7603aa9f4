#pragma once

#include <cstdint>

namespace vexil::hardware {

/// Runs the eight tests on the card as a host would, one after another, and prints what they said and how
/// long each pass took. The block is at most `mostMiB` large, or as large as the tests take it for 0. Returns
/// how many of them did not pass.
int runTimedTests(std::int32_t device, std::uint32_t mostMiB);

} // namespace vexil::hardware
