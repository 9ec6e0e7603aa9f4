#include "platform/linux/kernel_graphics/drm_clients.h"
#include "platform/linux/kernel_graphics/drm_statistics.h"
#include "support/fake_kernel_graphics.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <string>

// Open files of graphics drivers as real machines showed them.
namespace vexil::tests {
namespace {

using platform::DrmClients;
using platform::DrmStatistics;
using platform::PciAddress;

constexpr d3dkmt::Luid luid{7, 0};

class RecordedClient {
public:
    explicit RecordedClient(const char* tree) : tree_(std::string(VEXIL_TEST_DATA) + "/" + tree) {}

    [[nodiscard]] platform::DrmFdInfo only(const char* address) const {
        auto clients = DrmClients(tree_.root() / "proc").read(address);
        EXPECT_EQ(clients.size(), 1U);
        return clients.empty() ? platform::DrmFdInfo{} : clients.front();
    }

    /// Of the engine with that place in the driver's list, in units of 100 nanoseconds.
    [[nodiscard]] std::int64_t runningTime(const PciAddress& address, std::uint32_t node) const {
        DrmStatistics statistics(tree_.root() / "sys", tree_.root() / "proc", [] { return 0; });
        statistics.addAdapter(luid, address);
        d3dkmt::QueryStatistics query{};
        query.type = d3dkmt::QueryStatisticsType::Adapter;
        query.adapterLuid = luid;
        EXPECT_EQ(statistics.answer(query), d3dkmt::success);
        query = {};
        query.type = d3dkmt::QueryStatisticsType::Node;
        query.adapterLuid = luid;
        query.query.nodeId = node;
        EXPECT_EQ(statistics.answer(query), d3dkmt::success);
        return query.queryResult.nodeInformation.runningTime;
    }

private:
    RecordedTree tree_;
};

TEST(RecordedClientOfAmdgpu, HasUsedTheGraphicsEngine) {
    const RecordedClient machine("amdgpu_client.tree");
    const auto client = machine.only("0000:08:00.0");
    EXPECT_EQ(client.driver, "amdgpu");
    EXPECT_EQ(client.clientId, 217U);
    EXPECT_EQ(client.engines.size(), 1U) << "memory is no engine";
    EXPECT_EQ(machine.runningTime({0, 8, 0, 0}, 0), 1'073'227) << "of 107322799 ns";
}

TEST(RecordedClientOfAmdgpu, HasUsedItInTheFormOfLaterKernelsAsWell) {
    const RecordedClient machine("amdgpu_client_of_2024.tree");
    const auto client = machine.only("0000:04:00.0");
    EXPECT_EQ(client.clientId, 30U);
    EXPECT_EQ(client.engines.size(), 1U);
    EXPECT_EQ(machine.runningTime({0, 4, 0, 0}, 0), 394'561'168) << "of 39456116802 ns";
}

TEST(RecordedClientOfI915, HasUsedNoEngineOfTheFour) {
    const RecordedClient machine("i915_client.tree");
    const auto client = machine.only("0000:00:02.0");
    EXPECT_EQ(client.driver, "i915");
    EXPECT_EQ(client.clientId, 22U);
    ASSERT_EQ(client.engines.size(), 4U);
    for (const auto& [engine, use] : client.engines) {
        EXPECT_EQ(use.nanoseconds, 0U) << engine;
        EXPECT_EQ(use.capacity, 1U) << engine;
    }
    EXPECT_EQ(machine.runningTime({0, 0, 2, 0}, 0), 0);
}

TEST(RecordedClientOfXe, CountsCyclesOfAllThatPassed) {
    const RecordedClient machine("xe_client.tree");
    const auto client = machine.only("0000:00:02.0");
    EXPECT_EQ(client.driver, "xe");
    EXPECT_EQ(client.clientId, 607U);
    ASSERT_EQ(client.engines.size(), 2U);
    const auto& render = client.engines.at("rcs");
    EXPECT_EQ(render.cycles, 29'821'070U);
    EXPECT_EQ(render.totalCycles, 5'044'293'186'233U);
    EXPECT_EQ(client.engines.at("ccs").cycles, 571U);
    EXPECT_EQ(machine.runningTime({0, 0, 2, 0}, 0), 0) << "one reading tells no time";
}

} // namespace
} // namespace vexil::tests
