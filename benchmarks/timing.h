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

/// The value below which the given part of the values lies, 0 to 1. A half is the median; a tenth tells what
/// the machine can do while others use it too.
inline double quantile(std::vector<double> values, double part) {
    if (values.empty()) {
        return 0;
    }
    const auto place = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<std::size_t>(place)];
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
    return quantile(times, 0.5);
}

} // namespace vexil::benchmarks
