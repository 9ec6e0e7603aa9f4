#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"

#include "support/fake_kernel_graphics.h"

#include <gtest/gtest.h>

#include <random>

namespace vexil::tests {
namespace {

using namespace module::video_card;

/// A library that answers every call with whatever comes, and fills the whole record with it.
class Nonsense {
public:
    d3dkmt::Status answer(d3dkmt::QueryStatistics& request) {
        ++calls;
        const bool counts = request.type == d3dkmt::QueryStatisticsType::Adapter;
        const auto luck = random_() % 8;
        auto* words = reinterpret_cast<std::uint64_t*>(&request);
        for (std::size_t i = 0; i < sizeof(request) / sizeof(*words); ++i) {
            words[i] = random_();
        }
        if (counts && luck != 1) {
            request.queryResult.adapterInformation.nodeCount = static_cast<std::uint32_t>(random_() % 24);
        }
        return luck == 0 ? static_cast<d3dkmt::Status>(random_()) : d3dkmt::success;
    }

    std::uint64_t next() { return random_(); }

    std::size_t calls = 0;

private:
    std::mt19937_64 random_{20240502};
};

TEST(D3dkmtNonsense, IsSurvivedForAMillionCalls) {
    Nonsense nonsense;
    FakeKernelGraphics graphics;
    FakeSampleClock clock;
    graphics.adapters = {{"a", 1}, {"b", 2}};
    graphics.query = [&](d3dkmt::QueryStatistics& request) { return nonsense.answer(request); };

    AdapterRecord record;
    record.location = "01:00.0";
    record.devicePaths = {"a", "b"};
    std::size_t answered = 0;
    std::size_t leftOut = 0;
    while (nonsense.calls < 1'000'000) {
        StatisticsSources sources;
        D3DKMTDeviceStatisticsScanner({record, record}, graphics, clock).scan(sources);
        leftOut += 2 - sources.size();
        for (const auto& source : sources) {
            for (int query = 0; query < 20; ++query) {
                clock.time = std::chrono::steady_clock::time_point(
                    std::chrono::nanoseconds(static_cast<std::int64_t>(nonsense.next() >> 2)));
                std::uint64_t percent = 1000;
                if (source->getUsage(percent) == VideoCardStatisticsStatus::Ok) {
                    ++answered;
                    ASSERT_LE(percent, 100U);
                } else {
                    ASSERT_EQ(percent, 1000U);
                }
            }
        }
    }
    EXPECT_GT(answered, 10'000U);
    EXPECT_GT(leftOut, 100U) << "counts that no card has";
}

} // namespace
} // namespace vexil::tests
