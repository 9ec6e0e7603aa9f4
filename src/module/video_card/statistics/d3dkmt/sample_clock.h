#pragma once

#include <chrono>
#include <cstdint>

namespace vexil::module::video_card {

/// The clocks that engine load is measured with.
class SampleClock {
public:
    virtual ~SampleClock() = default;
    virtual std::int64_t counter() = 0;
    /// Counts of `counter` in a second.
    virtual std::int64_t frequency() = 0;
    virtual std::chrono::steady_clock::time_point now() = 0;
    /// May wake early.
    virtual void sleepFor(std::chrono::steady_clock::duration duration) = 0;
};

/// The performance counter and the steady clock of the machine. Lives as long as the process.
[[nodiscard]] SampleClock& systemSampleClock();

} // namespace vexil::module::video_card
