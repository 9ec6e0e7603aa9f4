#pragma once

#include "host/core/live_values.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <vector>

namespace vexil::host {

/// The live values of all cards at one moment.
struct Sample {
    std::uint64_t number = 0; ///< from 1
    std::chrono::system_clock::time_point time;
    std::chrono::duration<double> elapsed{}; ///< since the first sample
    std::vector<LiveValues> cards;           ///< in the order of the cards
};

struct MonitorSettings {
    std::chrono::nanoseconds interval{std::chrono::seconds(1)};
    std::uint64_t count = 0; ///< samples to take; 0 goes on until the cancel byte is set
};

/// The time that samples are taken by.
class SampleTimer {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~SampleTimer() = default;
    virtual TimePoint now() = 0;
    /// Returns at that time, or soon after the cancel byte is set.
    virtual void waitUntil(TimePoint time, const volatile std::uint8_t& cancel) = 0;
};

/// The steady clock. A signal handler cannot wake a thread on every system, so the wait looks at the byte.
class SteadySampleTimer final : public SampleTimer {
public:
    TimePoint now() override { return std::chrono::steady_clock::now(); }
    void waitUntil(TimePoint time, const volatile std::uint8_t& cancel) override;
};

/// Takes sample after sample, and hands each to `taken` before it waits for the next.
///
/// The first sample starts the clock when it has been read, since a source's first query may take longer than
/// later ones. Sample n is due n intervals after that, whatever the samples before it cost: the interval does
/// not drift. A reading that takes longer than the interval loses the samples that were due meanwhile; they
/// are not made up for.
/// Returns the number of samples taken.
std::uint64_t monitorCards(const std::function<std::vector<LiveValues>()>& read,
                           const MonitorSettings& settings, const volatile std::uint8_t& cancel,
                           SampleTimer& timer, const std::function<void(const Sample&)>& taken);

} // namespace vexil::host
