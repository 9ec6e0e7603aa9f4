#include "platform/linux/kernel_graphics/drm_statistics.h"

#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"
#include "support/fake_kernel_graphics.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

namespace fs = std::filesystem;
using platform::DrmStatistics;
using platform::PciAddress;
using namespace std::chrono_literals;

constexpr d3dkmt::Luid luid{7, -1};

std::string amdClient(unsigned client, std::uint64_t gfxNanoseconds) {
    return "drm-driver: amdgpu\ndrm-pdev: 0000:0a:00.0\ndrm-client-id: " + std::to_string(client) +
           "\ndrm-engine-gfx: " + std::to_string(gfxNanoseconds) + " ns\n";
}

class DrmStatisticsTest : public testing::Test {
protected:
    void open(const std::string& tree, const PciAddress& address) {
        tree_ = std::make_unique<RecordedTree>(fs::path(VEXIL_TEST_DATA) / tree);
        statistics_ = std::make_unique<DrmStatistics>(tree_->root() / "sys", tree_->root() / "proc",
                                                      [this] { return clock_.counter(); });
        statistics_->addAdapter(luid, address);
    }

    std::uint32_t nodeCount() {
        d3dkmt::QueryStatistics query{};
        query.type = d3dkmt::QueryStatisticsType::Adapter;
        query.adapterLuid = luid;
        EXPECT_EQ(statistics_->answer(query), d3dkmt::success);
        return query.queryResult.adapterInformation.nodeCount;
    }

    std::int64_t runningTime(std::uint32_t node) {
        d3dkmt::QueryStatistics query{};
        query.type = d3dkmt::QueryStatisticsType::Node;
        query.adapterLuid = luid;
        query.query.nodeId = node;
        EXPECT_EQ(statistics_->answer(query), d3dkmt::success);
        return query.queryResult.nodeInformation.runningTime;
    }

    FakeSampleClock clock_;
    std::unique_ptr<RecordedTree> tree_;
    std::unique_ptr<DrmStatistics> statistics_;
};

TEST_F(DrmStatisticsTest, CountTheBusyCounterAndTheEnginesOfTheDriver) {
    open("amdgpu.tree", {0, 10, 0, 0});
    EXPECT_EQ(nodeCount(), 9U);
    open("i915.tree", {0, 0, 2, 0});
    EXPECT_EQ(nodeCount(), 5U);
}

TEST_F(DrmStatisticsTest, SumTheEngineTimesOfTheClients) {
    open("amdgpu.tree", {0, 10, 0, 0});
    static_cast<void>(nodeCount());
    EXPECT_EQ(runningTime(1), 750'000'000) << "75 seconds of gfx";
    EXPECT_EQ(runningTime(2), 30'000'000) << "3 seconds of compute";
    EXPECT_EQ(runningTime(4), 0) << "nobody decodes";
}

TEST_F(DrmStatisticsTest, ShareAKindOfEngineByItsCapacity) {
    open("i915.tree", {0, 0, 2, 0});
    static_cast<void>(nodeCount());
    EXPECT_EQ(runningTime(2), 5'000'000) << "one second on one of two engines";
}

TEST_F(DrmStatisticsTest, LetTheBusyCounterStandForTheTimeSinceTheLastSample) {
    open("amdgpu.tree", {0, 10, 0, 0});
    static_cast<void>(nodeCount());
    clock_.pass(10s);
    EXPECT_EQ(runningTime(0), 40'000'000) << "40 percent of 10 seconds";
}

TEST_F(DrmStatisticsTest, AnswerARoundOfNodesFromOneSample) {
    open("amdgpu.tree", {0, 10, 0, 0});
    static_cast<void>(nodeCount());
    static_cast<void>(runningTime(1));
    tree_->addFile("proc/1200/fdinfo/9", amdClient(11, 6'000'000'000));
    EXPECT_EQ(runningTime(2), 30'000'000);
    EXPECT_EQ(runningTime(1), 760'000'000) << "asked again: a new round";
}

TEST_F(DrmStatisticsTest, TakeNoSampleFromBeforeTheRound) {
    open("amdgpu.tree", {0, 10, 0, 0});
    static_cast<void>(nodeCount());
    tree_->addFile("proc/1200/fdinfo/9", amdClient(11, 6'000'000'000));
    clock_.pass(6ms);
    EXPECT_EQ(runningTime(1), 760'000'000);
}

TEST_F(DrmStatisticsTest, RefuseWhatTheyDoNotKnow) {
    open("amdgpu.tree", {0, 10, 0, 0});
    d3dkmt::QueryStatistics query{};
    query.adapterLuid = {8, 0};
    EXPECT_EQ(statistics_->answer(query), d3dkmt::invalidParameter) << "no such adapter";
    query.adapterLuid = luid;
    query.type = static_cast<d3dkmt::QueryStatisticsType>(3);
    EXPECT_EQ(statistics_->answer(query), d3dkmt::invalidParameter) << "no such type";
    query.type = d3dkmt::QueryStatisticsType::Node;
    query.query.nodeId = 9;
    EXPECT_EQ(statistics_->answer(query), d3dkmt::invalidParameter) << "no such node";
}

TEST_F(DrmStatisticsTest, HaveNoNodesForACardWithoutFiles) {
    open("amdgpu.tree", {0, 11, 0, 0});
    EXPECT_EQ(nodeCount(), 0U);
}

TEST_F(DrmStatisticsTest, StayQuietWhenTheFilesGoAway) {
    open("amdgpu.tree", {0, 10, 0, 0});
    static_cast<void>(nodeCount());
    const auto before = runningTime(1);
    tree_->remove("proc");
    tree_->remove("sys");
    clock_.pass(1s);
    EXPECT_EQ(runningTime(0), 0);
    EXPECT_EQ(runningTime(1), before);
}

/// The whole way: the module's source over these files.
class UsageOnLinux : public DrmStatisticsTest {
protected:
    std::unique_ptr<module::video_card::VideoCardStatistics> source() {
        graphics_.adapters = {{"path", luid.lowPart}};
        graphics_.query = [this](d3dkmt::QueryStatistics& query) { return statistics_->answer(query); };
        module::video_card::AdapterRecord record;
        record.devicePaths = {"path"};
        return std::make_unique<module::video_card::D3DKMTDeviceStatistics>(record, graphics_, clock_);
    }

    FakeKernelGraphics graphics_;
    std::uint64_t percent_ = 0;
};

TEST_F(UsageOnLinux, IsTheBusyCounterWhereNoEngineIsBusier) {
    open("amdgpu.tree", {0, 10, 0, 0});
    const auto card = source();
    clock_.pass(5s);
    EXPECT_EQ(card->getUsage(percent_), module::video_card::VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(percent_, 40U);
}

TEST_F(UsageOnLinux, IsTheBusiestEngineOfAllClients) {
    open("amdgpu.tree", {0, 10, 0, 0});
    const auto card = source();
    static_cast<void>(card->getUsage(percent_));
    tree_->addFile("proc/1200/fdinfo/9", amdClient(11, 5'300'000'000));
    for (const char* file : {"proc/3456/fdinfo/4", "proc/3456/fdinfo/5"}) {
        tree_->addFile(file, amdClient(23, 70'500'000'000));
    }
    clock_.pass(1s);
    EXPECT_EQ(card->getUsage(percent_), module::video_card::VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(percent_, 80U) << "300 and 500 milliseconds of a second";
}

TEST_F(UsageOnLinux, IsToldByTheEnginesWhereTheBusyCounterTellsNothing) {
    const std::string file = "sys/bus/pci/devices/0000:0a:00.0/gpu_busy_percent";
    for (const char* content : {"", "N/A\n", "a folder"}) {
        open("amdgpu.tree", {0, 10, 0, 0});
        tree_->remove(file);
        if (std::string(content) == "a folder") {
            tree_->addFolder(file);
        } else {
            tree_->addFile(file, content);
        }
        statistics_ = std::make_unique<DrmStatistics>(tree_->root() / "sys", tree_->root() / "proc",
                                                      [this] { return clock_.counter(); });
        statistics_->addAdapter(luid, {0, 10, 0, 0});
        EXPECT_EQ(nodeCount(), 9U) << content;
        const auto card = source();
        static_cast<void>(card->getUsage(percent_));
        tree_->addFile("proc/1200/fdinfo/9", amdClient(11, 5'295'000'000));
        clock_.pass(1s);
        EXPECT_EQ(card->getUsage(percent_), module::video_card::VideoCardStatisticsStatus::Ok);
        EXPECT_EQ(percent_, 30U) << "29.5; " << content;
        EXPECT_EQ(runningTime(0), 0) << content;
    }
}

TEST_F(UsageOnLinux, DoesNotJumpWhenAnOldClientIsFoundLate) {
    open("i915.tree", {0, 0, 2, 0});
    const auto card = source();
    static_cast<void>(card->getUsage(percent_));
    tree_->addLink("proc/701/fd/3", "/dev/dri/card0");
    const auto render = [&](const char* time) {
        tree_->addFile("proc/701/fdinfo/3", "drm-driver: i915\ndrm-pdev: 0000:00:02.0\ndrm-client-id: 99\n"
                                            "drm-engine-render: " +
                                                std::string(time) + " ns\n");
    };
    render("7200000000000");
    clock_.pass(1s);
    EXPECT_EQ(card->getUsage(percent_), module::video_card::VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(percent_, 0U) << "two hours of work are not of the last second";
    render("7200250000000");
    clock_.pass(1s);
    EXPECT_EQ(card->getUsage(percent_), module::video_card::VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(percent_, 25U);
}

TEST_F(UsageOnLinux, DoesNotJumpWhenAClientEnds) {
    open("i915.tree", {0, 0, 2, 0});
    const auto card = source();
    static_cast<void>(card->getUsage(percent_));
    tree_->remove("proc/700");
    clock_.pass(1s);
    EXPECT_EQ(card->getUsage(percent_), module::video_card::VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(percent_, 0U);
}

TEST_F(UsageOnLinux, IsToldFromCyclesWhereTheDriverCountsThem) {
    open("xe.tree", {0, 3, 0, 0});
    const auto card = source();
    static_cast<void>(card->getUsage(percent_));
    tree_->addFile("proc/800/fdinfo/3", "drm-driver: xe\ndrm-client-id: 5\ndrm-pdev: 0000:03:00.0\n"
                                        "drm-cycles-rcs: 28507900\ndrm-total-cycles-rcs: 7656183225\n");
    clock_.pass(2s);
    EXPECT_EQ(card->getUsage(percent_), module::video_card::VideoCardStatisticsStatus::Ok);
    EXPECT_EQ(percent_, 25U) << "250,000 of a million cycles";
}

} // namespace
} // namespace vexil::tests
