#pragma once

#include <cstdint>

namespace vexil::module::video_card {

/// What a path of the stress test ends with is a `TestResult`, or this: the card or the GUI could not do what
/// was asked. The end of the run turns it into its message and `NotCompleted`.
inline constexpr std::uint8_t operationFailed = 2;

} // namespace vexil::module::video_card
