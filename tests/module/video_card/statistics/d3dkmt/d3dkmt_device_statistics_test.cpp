#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"

#include "platform/library_names.h"
#include "support/fake_kernel_graphics.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <stdexcept>
#include <thread>

namespace vexil::tests {
namespace {

using namespace module::video_card;
using namespace std::chrono_literals;
using Status = VideoCardStatisticsStatus;

class D3dkmtStatistics : public testing::Test {
protected:
    D3dkmtStatistics() {
        record_.location = "01:00.0";
        record_.devicePaths = {"path"};
        graphics_.adapters = {{"path", 7}};
        graphics_.query = [this](d3dkmt::QueryStatistics& request) { return answer(request); };
    }

    /// Engines that run at a load of so many percent of the clock's time.
    d3dkmt::Status answer(d3dkmt::QueryStatistics& request) {
        if (request.type == d3dkmt::QueryStatisticsType::Adapter) {
            request.queryResult.adapterInformation.nodeCount = static_cast<std::uint32_t>(loads_.size());
            return countStatus_;
        }
        const auto node = request.query.nodeId;
        if (node < statuses_.size() && statuses_[node] != d3dkmt::success) {
            return statuses_[node];
        }
        request.queryResult.nodeInformation.runningTime =
            static_cast<std::int64_t>(static_cast<double>(clock_.counter()) * loads_.at(node) / 100);
        return d3dkmt::success;
    }

    /// From now on: the LUIDs of the adapters whose engines are asked for. `count` is the status of a query
    /// for their number.
    std::shared_ptr<std::set<std::uint32_t>>
    adaptersAskedForEngines(std::function<d3dkmt::Status(const d3dkmt::QueryStatistics&)> count =
                                [](const auto&) { return d3dkmt::success; }) {
        auto asked = std::make_shared<std::set<std::uint32_t>>();
        graphics_.query = [this, asked, count = std::move(count)](d3dkmt::QueryStatistics& request) {
            const auto status = answer(request);
            if (request.type == d3dkmt::QueryStatisticsType::Adapter) {
                return count(request);
            }
            asked->insert(request.adapterLuid.lowPart);
            return status;
        };
        return asked;
    }

    std::unique_ptr<D3DKMTDeviceStatistics> make() {
        return std::make_unique<D3DKMTDeviceStatistics>(record_, graphics_, clock_);
    }

    std::string errorOfMaking() {
        try {
            make();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no error";
    }

    AdapterRecord record_;
    FakeKernelGraphics graphics_;
    FakeSampleClock clock_;
    std::vector<double> loads_ = {25};
    std::vector<d3dkmt::Status> statuses_;
    d3dkmt::Status countStatus_ = d3dkmt::success;
    std::uint64_t percent_ = 12345;
};

TEST_F(D3dkmtStatistics, LoadTheLibraryWithTheFlagOneAndNeverReleaseIt) {
    { const auto source = make(); }
    EXPECT_EQ(graphics_.loads,
              std::vector<std::string>{std::string(platform::kernelGraphicsLibrary()) + " 1"});
}

TEST_F(D3dkmtStatistics, NeverCloseAnAdapter) {
    { static_cast<void>(make()->getUsage(percent_)); }
    EXPECT_EQ(graphics_.resolved,
              (std::set<std::string>{"D3DKMTOpenAdapterFromDeviceName", "D3DKMTQueryStatistics"}));
}

/// Once a process, whichever test it runs before this one.
TEST_F(D3dkmtStatistics, ReadTheFrequencyOfTheCounterOnceWithTheFirstEngine) {
    loads_ = {};
    make();
    EXPECT_EQ(clock_.frequencyReads, 0) << "there is no engine";
    loads_ = {25, 25};
    make();
    static_cast<void>(make()->getUsage(percent_));
    EXPECT_LE(clock_.frequencyReads, 1);
    EXPECT_EQ(percent_, 25U) << "and it was read";
}

TEST_F(D3dkmtStatistics, MatchTheLocationByteForByte) {
    const auto source = make();
    AdapterRecord other;
    other.location = "01:00.0";
    EXPECT_TRUE(source->matches(other));
    for (const char* location : {"01:00.1", "01:00.00", "01:00.", ""}) {
        other.location = location;
        EXPECT_FALSE(source->matches(other)) << location;
    }
}

TEST_F(D3dkmtStatistics, TakeAHundredMillisecondsForTheFirstQuery) {
    const auto source = make();
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 25U);
    EXPECT_EQ(clock_.sleeps, (std::vector<FakeSampleClock::Duration>{100ms}));
}

TEST_F(D3dkmtStatistics, SleepAgainWhenWokenEarly) {
    clock_.sleepTakes = [](auto asked) { return std::min<FakeSampleClock::Duration>(asked, 40ms); };
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(clock_.sleeps, (std::vector<FakeSampleClock::Duration>{100ms, 60ms, 20ms}));
}

TEST_F(D3dkmtStatistics, MeasureLaterQueriesSinceTheOneBefore) {
    const auto source = make();
    static_cast<void>(source->getUsage(percent_));
    const auto before = clock_.counter();
    clock_.pass(2s);
    loads_[0] = 0; // counted from the start of the clock, so the delta must be made here
    graphics_.query = [&](d3dkmt::QueryStatistics& request) {
        request.queryResult.nodeInformation.runningTime = before / 4 + 15'000'000;
        return d3dkmt::success;
    };
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 75U) << "1.5 seconds of 2";
    EXPECT_EQ(clock_.sleeps.size(), 1U);
}

TEST_F(D3dkmtStatistics, TakeTheBusiestEngineAndRoundUp) {
    loads_ = {12.2, 37.1};
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 38U);
}

TEST_F(D3dkmtStatistics, TakeTheBusiestEngineOverAllAdapters) {
    record_.devicePaths = {"path", "second"};
    graphics_.adapters["second"] = 8;
    std::vector<std::uint32_t> asked;
    graphics_.query = [&](d3dkmt::QueryStatistics& request) {
        asked.push_back(request.adapterLuid.lowPart);
        EXPECT_EQ(request.adapterLuid.highPart, -1);
        const auto status = answer(request);
        if (request.type == d3dkmt::QueryStatisticsType::Node && request.adapterLuid.lowPart == 8) {
            request.queryResult.nodeInformation.runningTime *= 3;
        }
        return status;
    };
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 75U);
    EXPECT_EQ(asked, (std::vector<std::uint32_t>{7, 8, 7, 8, 7, 8}));
}

TEST_F(D3dkmtStatistics, AskForEachEngineInOrderWithAClearedRequest) {
    loads_ = {1, 2, 3};
    std::vector<std::uint32_t> nodes;
    graphics_.query = [&](d3dkmt::QueryStatistics& request) {
        d3dkmt::QueryStatistics cleared{};
        cleared.type = request.type;
        cleared.adapterLuid = request.adapterLuid;
        cleared.query.nodeId = request.query.nodeId;
        EXPECT_EQ(std::memcmp(&cleared, &request, sizeof(request)), 0);
        if (request.type == d3dkmt::QueryStatisticsType::Node) {
            nodes.push_back(request.query.nodeId);
        }
        return answer(request);
    };
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(nodes, (std::vector<std::uint32_t>{0, 1, 2, 0, 1, 2}));
}

/// The look at the first engine takes as long as the caller let pass, so the second one's window is twice
/// that.
class D3dkmtWindows : public D3dkmtStatistics {
protected:
    std::uint64_t usageWith(std::vector<std::chrono::milliseconds> ran) {
        loads_ = {0, 0};
        const auto source = make();
        static_cast<void>(source->getUsage(percent_));
        graphics_.query = [&](d3dkmt::QueryStatistics& request) {
            const auto node = request.query.nodeId;
            if (node == 0) {
                clock_.pass(100ms);
            }
            request.queryResult.nodeInformation.runningTime =
                std::chrono::nanoseconds(ran[node]).count() / 100;
            return d3dkmt::success;
        };
        clock_.pass(100ms);
        EXPECT_EQ(source->getUsage(percent_), Status::Ok);
        return percent_;
    }
};

TEST_F(D3dkmtWindows, AreReadForEachEngine) {
    EXPECT_EQ(usageWith({0ms, 50ms}), 25U) << "one for the whole adapter would be 100 ms long";
}

TEST_F(D3dkmtWindows, EndBeforeTheirEngineIsAsked) {
    EXPECT_EQ(usageWith({50ms, 0ms}), 50U) << "one that ends afterwards would be 200 ms long";
}

TEST_F(D3dkmtStatistics, GiveZeroForTwoQueriesInTheSameMoment) {
    const auto source = make();
    static_cast<void>(source->getUsage(percent_));
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 0U);
}

TEST_F(D3dkmtStatistics, UseTheLastDeltaOverTheNewWindowWhenAQueryFails) {
    const auto source = make();
    static_cast<void>(source->getUsage(percent_));
    statuses_ = {d3dkmt::invalidParameter};
    clock_.pass(50ms);
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 50U) << "25 milliseconds of 50";
}

TEST_F(D3dkmtStatistics, TakeEveryStatusButZeroForAFailure) {
    const auto source = make();
    static_cast<void>(source->getUsage(percent_));
    statuses_ = {1};
    clock_.pass(50ms);
    static_cast<void>(source->getUsage(percent_));
    EXPECT_EQ(percent_, 50U);
}

TEST_F(D3dkmtStatistics, LeaveTheOutValueAloneWithoutAnyEngine) {
    loads_ = {};
    const auto source = make();
    EXPECT_EQ(source->getUsage(percent_), Status::Unavailable);
    EXPECT_EQ(percent_, 12345U);
    EXPECT_EQ(source->getUsage(percent_), Status::Unavailable);
    EXPECT_EQ(clock_.sleeps.size(), 1U) << "only the first query waits";
}

TEST_F(D3dkmtStatistics, HaveNoEnginesWhereTheirCountCannotBeRead) {
    countStatus_ = d3dkmt::invalidParameter;
    EXPECT_EQ(make()->getUsage(percent_), Status::Unavailable);
}

TEST_F(D3dkmtStatistics, HaveNoEnginesWithAnyStatusOfTheirCountButZero) {
    countStatus_ = 1;
    EXPECT_EQ(make()->getUsage(percent_), Status::Unavailable);
}

TEST_F(D3dkmtStatistics, CountTheEnginesOfTheNextAdapterWhereTheFunctionIsNotFound) {
    record_.devicePaths = {"path", "second"};
    graphics_.adapters["second"] = 8;
    int lookUps = 0;
    graphics_.onResolve = [&] {
        // Two to open the paths; the third is to count the engines of the first adapter.
        graphics_.missing.clear();
        if (++lookUps == 3) {
            graphics_.missing = {"D3DKMTQueryStatistics"};
        }
    };
    const auto asked = adaptersAskedForEngines();
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 25U);
    EXPECT_EQ(*asked, std::set<std::uint32_t>{8});
}

TEST_F(D3dkmtStatistics, CountTheEnginesOfTheNextAdapterWhereTheQueryFails) {
    record_.devicePaths = {"path", "second"};
    graphics_.adapters["second"] = 8;
    const auto asked = adaptersAskedForEngines([](const d3dkmt::QueryStatistics& request) {
        return request.adapterLuid.lowPart == 7 ? 1 : d3dkmt::success;
    });
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 25U);
    EXPECT_EQ(*asked, std::set<std::uint32_t>{8});
}

TEST_F(D3dkmtStatistics, HaveNoEnginesWithoutTheStatisticsFunction) {
    graphics_.missing = {"D3DKMTQueryStatistics"};
    EXPECT_EQ(make()->getUsage(percent_), Status::Unavailable);
}

TEST_F(D3dkmtStatistics, KeepTheLastSampleWhenTheStatisticsFunctionGoesAway) {
    const auto source = make();
    static_cast<void>(source->getUsage(percent_));
    graphics_.missing = {"D3DKMTQueryStatistics"};
    clock_.pass(1s);
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 25U) << "window and delta of the reading before";
}

TEST_F(D3dkmtStatistics, EndTheSamplingOfAnAdapterSilentlyWithWhateverIsThrown) {
    record_.devicePaths = {"path", "second"};
    graphics_.adapters["second"] = 8;
    loads_ = {10, 90};
    const auto source = make();
    static_cast<void>(source->getUsage(percent_));
    EXPECT_EQ(percent_, 90U);
    graphics_.query = [&](d3dkmt::QueryStatistics& request) {
        if (request.adapterLuid.lowPart == 7 && request.query.nodeId == 1) {
            throw 5;
        }
        if (request.adapterLuid.lowPart == 8) {
            throw std::runtime_error("no adapter");
        }
        return answer(request);
    };
    loads_ = {20, 90};
    clock_.pass(1s);
    EXPECT_EQ(source->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 100U) << "the first engine of the first adapter was still sampled";
}

TEST_F(D3dkmtStatistics, SkipAPathWithWhateverIsThrown) {
    record_.devicePaths = {"path", "second"};
    graphics_.adapters["second"] = 8;
    int lookUps = 0;
    graphics_.onResolve = [&] {
        if (++lookUps == 1) {
            throw 5;
        }
    };
    std::set<std::uint32_t> asked;
    graphics_.query = [&](d3dkmt::QueryStatistics& request) {
        asked.insert(request.adapterLuid.lowPart);
        return answer(request);
    };
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(asked, std::set<std::uint32_t>{8});
}

TEST_F(D3dkmtStatistics, LeaveOutARecordWithWhateverIsThrown) {
    AdapterRecord other = record_;
    other.location = "02:00.0";
    int counts = 0;
    graphics_.query = [&](d3dkmt::QueryStatistics& request) {
        if (++counts == 1) {
            throw 5;
        }
        return answer(request);
    };
    StatisticsSources sources;
    D3DKMTDeviceStatisticsScanner({record_, other}, graphics_, clock_).scan(sources);
    ASSERT_EQ(sources.size(), 1U);
    EXPECT_TRUE(sources[0]->matches(other));
}

TEST_F(D3dkmtStatistics, AreNotMadeForPathsThatDoNotOpen) {
    const std::string error = "Could not get adapter(s) from path(s)";
    record_.devicePaths = {"elsewhere", "nowhere"};
    EXPECT_EQ(errorOfMaking(), error);
    record_.devicePaths = {};
    EXPECT_EQ(errorOfMaking(), error);
    record_.devicePaths = {"path"};
    graphics_.openStatus = 1;
    EXPECT_EQ(errorOfMaking(), error) << "any status but 0 is a failure";
}

TEST_F(D3dkmtStatistics, AreNotMadeWithoutTheOpeningFunctionOrTheLibrary) {
    graphics_.missing = {"D3DKMTOpenAdapterFromDeviceName"};
    EXPECT_EQ(errorOfMaking(), "Could not get adapter(s) from path(s)");
    graphics_.missing.clear();
    graphics_.library = nullptr;
    EXPECT_EQ(errorOfMaking(), "Could not get adapter(s) from path(s)");
}

TEST_F(D3dkmtStatistics, LookNothingUpInAHandleOfAllOnes) {
    graphics_.library = reinterpret_cast<void*>(~std::uintptr_t{0});
    EXPECT_EQ(errorOfMaking(), "Could not get adapter(s) from path(s)");
    EXPECT_TRUE(graphics_.resolvedFrom.empty());
    // An empty handle is not tested: the look-up itself finds nothing.
    graphics_.library = nullptr;
    EXPECT_EQ(errorOfMaking(), "Could not get adapter(s) from path(s)");
    EXPECT_EQ(graphics_.resolvedFrom, std::set<void*>{nullptr});
}

TEST_F(D3dkmtStatistics, SkipAPathThatDoesNotOpen) {
    record_.devicePaths = {"elsewhere", "path"};
    EXPECT_EQ(make()->getUsage(percent_), Status::Ok);
    EXPECT_EQ(percent_, 25U);
}

TEST_F(D3dkmtStatistics, KnowNothingButTheUsage) {
    const auto source = make();
    std::int64_t celsius = 1;
    EXPECT_EQ(source->getTemperature(celsius), Status::Unavailable);
    EXPECT_EQ(source->getTotalMemory(percent_), Status::Unavailable);
    EXPECT_EQ(source->getFreeMemory(percent_), Status::Unavailable);
    EXPECT_EQ(celsius, 1);
    EXPECT_EQ(percent_, 12345U);
}

TEST_F(D3dkmtStatistics, DelayTheQueriesOfAllCardsByAFirstOne) {
    const auto first = make();
    const auto second = make();
    static_cast<void>(second->getUsage(percent_));
    bool asleep = false;
    bool answeredMeanwhile = false;
    std::thread other;
    clock_.sleepTakes = [&](auto asked) {
        asleep = true;
        other = std::thread([&] {
            std::uint64_t value = 0;
            static_cast<void>(second->getUsage(value));
            answeredMeanwhile = asleep;
        });
        std::this_thread::sleep_for(50ms);
        asleep = false;
        return asked;
    };
    static_cast<void>(first->getUsage(percent_));
    other.join();
    EXPECT_FALSE(answeredMeanwhile);
}

TEST_F(D3dkmtStatistics, AreFoundForEachRecordThatOpens) {
    AdapterRecord broken = record_;
    broken.devicePaths = {"elsewhere"};
    AdapterRecord other = record_;
    other.location = "02:00.0";
    StatisticsSources sources;
    D3DKMTDeviceStatisticsScanner scanner({record_, broken, other}, graphics_, clock_);
    EXPECT_EQ(&scanner.scan(sources), &sources);
    ASSERT_EQ(sources.size(), 2U);
    EXPECT_TRUE(sources[0]->matches(record_));
    EXPECT_TRUE(sources[1]->matches(other));
}

TEST_F(D3dkmtStatistics, LeaveOutACardThatClaimsMoreEnginesThanThereCanBe) {
    graphics_.query = [](d3dkmt::QueryStatistics& request) {
        request.queryResult.adapterInformation.nodeCount = 0xFFFFFFFF;
        return d3dkmt::success;
    };
    StatisticsSources sources;
    D3DKMTDeviceStatisticsScanner({record_}, graphics_, clock_).scan(sources);
    EXPECT_TRUE(sources.empty());
}

TEST(D3dkmtRecords, LieAsTheKernelLaysThemOut) {
    EXPECT_EQ(sizeof(d3dkmt::QueryStatistics), 808U);
    EXPECT_EQ(offsetof(d3dkmt::QueryStatistics, type), 0U);
    EXPECT_EQ(offsetof(d3dkmt::QueryStatistics, adapterLuid), 4U);
    EXPECT_EQ(offsetof(d3dkmt::QueryStatistics, queryResult), 24U);
    EXPECT_EQ(offsetof(d3dkmt::QueryStatistics, query), 800U);
    EXPECT_EQ(static_cast<std::uint32_t>(d3dkmt::QueryStatisticsType::Adapter), 0U);
    EXPECT_EQ(static_cast<std::uint32_t>(d3dkmt::QueryStatisticsType::Node), 5U);
}

} // namespace
} // namespace vexil::tests
