#include "host/core/monitoring.h"

#include <gtest/gtest.h>

namespace vexil::host {
namespace {

using std::chrono::milliseconds;
using Seconds = std::chrono::duration<double>;

/// A clock that stands still but for the readings, which take their time, and the waits.
class FakeTimer final : public SampleTimer {
public:
    TimePoint now() override { return now_; }
    void waitUntil(TimePoint time, const volatile std::uint8_t&) override {
        waits.push_back(std::chrono::duration_cast<milliseconds>(time - now_));
        now_ = std::max(now_, time) + latency;
    }
    void pass(milliseconds time) { now_ += time; }

    std::vector<milliseconds> waits;
    milliseconds latency{0};

private:
    TimePoint now_{std::chrono::hours(5)};
};

class Monitoring : public ::testing::Test {
protected:
    /// The times of the samples, whose readings take as long as `costs` says, in turns.
    std::vector<double> monitor(milliseconds interval, std::uint64_t count,
                                const std::vector<milliseconds>& costs) {
        std::size_t reading = 0;
        std::vector<double> times;
        const auto read = [&] {
            timer_.pass(costs[reading++ % costs.size()]);
            return std::vector<LiveValues>(1);
        };
        monitorCards(read, {interval, count}, cancel_, timer_, [&](const Sample& sample) {
            times.push_back(sample.elapsed.count());
            EXPECT_EQ(sample.number, times.size());
            if (times.size() == cancelAt_) {
                cancel_ = 1;
            }
        });
        return times;
    }

    FakeTimer timer_;
    volatile std::uint8_t cancel_ = 0;
    std::size_t cancelAt_ = 0;
};

TEST_F(Monitoring, TakesAsManySamplesAsAreAskedFor) {
    EXPECT_EQ(monitor(milliseconds(200), 20, {milliseconds(1)}).size(), 20U);
    EXPECT_EQ(monitor(milliseconds(200), 1, {milliseconds(1)}).size(), 1U);
}

TEST_F(Monitoring, DoesNotDriftWhateverReadingsAndWakingUpCost) {
    timer_.latency = milliseconds(3);
    const auto times =
        monitor(milliseconds(200), 1000, {milliseconds(40), milliseconds(190), milliseconds(7)});
    for (std::size_t i = 1; i < times.size(); ++i) {
        ASSERT_DOUBLE_EQ(times[i], 0.2 * static_cast<double>(i) + 0.003) << i;
    }
}

TEST_F(Monitoring, StartsItsClockWhenTheFirstReadingIsDone) {
    const auto times = monitor(milliseconds(200), 3, {milliseconds(700), milliseconds(0), milliseconds(0)});
    EXPECT_EQ(times, (std::vector<double>{0.0, 0.2, 0.4}));
    EXPECT_EQ(timer_.waits, (std::vector<milliseconds>{milliseconds(200), milliseconds(200)}));
}

TEST_F(Monitoring, LosesTheSamplesThatAreDueDuringALongReadingAndKeepsToItsGrid) {
    const auto times =
        monitor(milliseconds(200), 5,
                {milliseconds(0), milliseconds(450), milliseconds(0), milliseconds(0), milliseconds(0)});
    ASSERT_EQ(times.size(), 5U);
    EXPECT_DOUBLE_EQ(times[1], 0.2);
    EXPECT_DOUBLE_EQ(times[2], 0.8) << "0.65 is over when the long one ends";
    EXPECT_DOUBLE_EQ(times[3], 1.0);
}

TEST_F(Monitoring, NeverTakesTwoSamplesAtOneTime) {
    // A reading that ends on the grid point itself waits for the next.
    const auto times = monitor(milliseconds(200), 4, {milliseconds(200)});
    for (std::size_t i = 1; i < times.size(); ++i) {
        EXPECT_DOUBLE_EQ(times[i] - times[i - 1], i == 1 ? 0.2 : 0.4) << i;
    }
}

TEST_F(Monitoring, WithoutACountGoesOnUntilItIsCancelled) {
    cancelAt_ = 137;
    EXPECT_EQ(monitor(milliseconds(100), 0, {milliseconds(1)}).size(), 137U);
}

TEST_F(Monitoring, TakesNoSampleOnceItIsCancelled) {
    cancel_ = 1;
    EXPECT_TRUE(monitor(milliseconds(100), 5, {milliseconds(1)}).empty());
}

TEST_F(Monitoring, CountsTheSamplesOfARun) {
    cancelAt_ = 3;
    std::uint64_t seen = 0;
    const auto taken =
        monitorCards([] { return std::vector<LiveValues>(2); }, {milliseconds(1), 10}, cancel_, timer_,
                     [&](const Sample& sample) {
                         seen = sample.number;
                         EXPECT_EQ(sample.cards.size(), 2U);
                         cancel_ = sample.number == 3 ? 1 : 0;
                     });
    EXPECT_EQ(seen, 3U);
    EXPECT_EQ(taken, 3U);
}

TEST(SteadySampleTimers, WaitUntilTheTimeAndNotLess) {
    SteadySampleTimer timer;
    const volatile std::uint8_t cancel = 0;
    const auto time = timer.now() + milliseconds(50);
    timer.waitUntil(time, cancel);
    EXPECT_GE(timer.now(), time);
}

TEST(SteadySampleTimers, DoNotWaitForAnHourAfterACancel) {
    SteadySampleTimer timer;
    const volatile std::uint8_t cancel = 1;
    const auto start = timer.now();
    timer.waitUntil(start + std::chrono::hours(1), cancel);
    EXPECT_LT(timer.now() - start, std::chrono::seconds(30));
}

} // namespace
} // namespace vexil::host
