#pragma once

#include <cstdint>

class SystemTimer;

namespace vexil::module::video_card {

/// A duty cycle: how much of each second a stress test renders, and how much it sleeps. Plain data, copied
/// from the test into the window that renders.
struct LoadController {
    /// When a burn-in run is to end. Nobody reads the two numbers: the run is ended by its window.
    struct Deadline {
        std::uint32_t startTick = 0;
        std::uint64_t seconds = 0;
        bool infinite = false; ///< begin again when the time is up
    };

    std::uint32_t startTick = 0; ///< of the suite's timer, as `nowTick`
    std::uint32_t nowTick = 0;
    std::int32_t period = 1;   ///< seconds
    std::uint64_t frames = 0;  ///< calls of `tick`
    double loadFraction = 1.0; ///< 0.0 to 1.0
    Deadline deadline;
    bool burnInActive = false;

    /// Called once in each second, on the thread that renders: sleeps for the part of the period that is not
    /// load. False, without a sleep, if less than the load's part has passed since the last one.
    bool tick(SystemTimer& timer);
};

} // namespace vexil::module::video_card
