#pragma once

#include <cstdint>

namespace vexil::module::video_card {

/// Whether a driver that reports `version` (1000 * major + 10 * minor, 0 without a driver) is older than
/// CUDA 11.3, which the embedded kernels need.
[[nodiscard]] constexpr bool isCudaDriverOutOfDate(std::int32_t version) {
    // The sum in double precision is the rule itself: 11030 gives exactly the double 11.3 and passes.
    return 11.3 > (version % 100) * 0.01 + version / 1000;
}

} // namespace vexil::module::video_card
