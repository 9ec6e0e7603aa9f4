#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace vexil::benchmarks {

using Clock = std::chrono::steady_clock;

inline double milliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// Of an odd number of values the middle one, of an even number the higher of the two.
inline double median(std::vector<double> values) {
    if (values.empty()) {
        return 0;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Median time of `rounds` calls, in milliseconds.
template <typename Call>
double medianTime(int rounds, Call call) {
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        const auto start = Clock::now();
        call();
        times.push_back(milliseconds(Clock::now() - start));
    }
    return median(times);
}

} // namespace vexil::benchmarks
