#include "host/core/monitoring.h"

#include <algorithm>
#include <thread>

namespace vexil::host {

namespace {

/// How long an interrupt may go unnoticed.
constexpr std::chrono::milliseconds longestSleep{20};

} // namespace

void SteadySampleTimer::waitUntil(TimePoint time, const volatile std::uint8_t& cancel) {
    for (auto left = time - now(); left.count() > 0 && cancel == 0; left = time - now()) {
        std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(left, longestSleep));
    }
}

std::uint64_t monitorCards(const std::function<std::vector<LiveValues>()>& read,
                           const MonitorSettings& settings, const volatile std::uint8_t& cancel,
                           SampleTimer& timer, const std::function<void(const Sample&)>& taken) {
    std::uint64_t number = 0;
    SampleTimer::TimePoint start{};
    std::int64_t interval = 0;
    while (cancel == 0) {
        Sample sample;
        if (number == 0) {
            sample.cards = read();
            start = timer.now();
            sample.time = std::chrono::system_clock::now();
        } else {
            sample.time = std::chrono::system_clock::now();
            sample.elapsed = timer.now() - start;
            sample.cards = read();
        }
        sample.number = ++number;
        taken(sample);
        if (number == settings.count) {
            break;
        }
        // The next time on the grid that is still to come.
        interval = std::max(interval + 1, (timer.now() - start) / settings.interval + 1);
        timer.waitUntil(start + interval * settings.interval, cancel);
    }
    return number;
}

} // namespace vexil::host
