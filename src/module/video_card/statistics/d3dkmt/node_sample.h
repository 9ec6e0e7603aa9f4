#pragma once

#include <cstdint>

namespace vexil::module::video_card {

/// One engine of an adapter at its last two readings. The times are in units of 100 nanoseconds.
struct D3DKMTNodeSample {
    std::int64_t runningTime = 0;
    std::int64_t runningTimeDelta = 0;
    std::int64_t counter = 0; ///< of the performance counter
    std::int64_t counterDelta = 0;

    void takeCounter(std::int64_t reading);
    void takeRunningTime(std::int64_t reading);
};

/// The part of the window between two readings in which the engine ran, 0 to 100. `frequency` is that of the
/// performance counter; 0 if it was never read.
[[nodiscard]] float nodeLoad(const D3DKMTNodeSample& node, std::int64_t frequency);

} // namespace vexil::module::video_card
