#include "module/video_card/statistics/d3dkmt/sample_clock.h"

#include "platform/performance_counter.h"

#include <thread>

namespace vexil::module::video_card {

namespace {

class SystemSampleClock final : public SampleClock {
public:
    std::int64_t counter() override { return platform::performanceCounter(); }
    std::int64_t frequency() override { return platform::performanceCounterFrequency(); }
    std::chrono::steady_clock::time_point now() override { return std::chrono::steady_clock::now(); }
    void sleepFor(std::chrono::steady_clock::duration duration) override {
        std::this_thread::sleep_for(duration);
    }
};

} // namespace

SampleClock& systemSampleClock() {
    static SystemSampleClock clock;
    return clock;
}

} // namespace vexil::module::video_card
