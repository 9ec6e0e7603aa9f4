#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"

#include "support/fake_kernel_graphics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace vexil::tests {
namespace {

using namespace module::video_card;

/// A library that answers every call with whatever comes, and fills the whole record with it. Most counts of
/// engines are small, so that most calls ask for engines; some are large, and some are what no card has.
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
            const bool many = random_() % 64 == 0;
            request.queryResult.adapterInformation.nodeCount =
                static_cast<std::uint32_t>(many ? 24 + random_() % 4977 : random_() % 24);
            mostNodes = std::max(mostNodes, request.queryResult.adapterInformation.nodeCount);
        }
        return luck == 0 ? static_cast<d3dkmt::Status>(random_()) : d3dkmt::success;
    }

    d3dkmt::Status open(d3dkmt::OpenAdapterFromDeviceName& request) {
        ++calls;
        request.adapter = static_cast<std::uint32_t>(random_());
        request.adapterLuid = {static_cast<std::uint32_t>(random_()), static_cast<std::int32_t>(random_())};
        return random_() % 8 == 0 ? static_cast<d3dkmt::Status>(random_() | 1) : d3dkmt::success;
    }

    std::uint64_t next() { return random_(); }

    std::size_t calls = 0;
    std::uint32_t mostNodes = 0; ///< of those that a card can have

private:
    std::mt19937_64 random_{20240502};
};

TEST(D3dkmtNonsense, IsSurvivedForAMillionCalls) {
    Nonsense nonsense;
    FakeKernelGraphics graphics;
    FakeSampleClock clock;
    graphics.open = [&](d3dkmt::OpenAdapterFromDeviceName& request) { return nonsense.open(request); };
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
    EXPECT_GT(leftOut, 100U) << "paths that do not open, and counts that no card has";
    EXPECT_GT(nonsense.mostNodes, 4'000U);
}

} // namespace
} // namespace vexil::tests
