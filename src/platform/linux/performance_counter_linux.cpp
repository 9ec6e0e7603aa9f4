#include "platform/performance_counter.h"

#include <chrono>
#include <ratio>

namespace vexil::platform {

namespace {

/// The unit that Windows counts in on every machine of today.
using HundredNanoseconds = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

} // namespace

std::int64_t performanceCounter() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<HundredNanoseconds>(time).count();
}

std::int64_t performanceCounterFrequency() { return HundredNanoseconds::period::den; }

} // namespace vexil::platform
