#include "platform/linux/kernel_graphics/adapter_luids.h"

#include "platform/shared_library.h"
#include "stand_ins/graphics_stand_ins.h"
#include "support/environment.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

// Adapters from Direct3D to the kernel's files. The stand-ins answer to the names of the real libraries, for
// they are in the process before anybody asks for those.
namespace vexil::tests {
namespace {

namespace d3dkmt = platform::d3dkmt;
using platform::PciAddress;

class AdapterLuids : public testing::Test {
protected:
    static void SetUpTestSuite() {
        tree_ = std::make_unique<RecordedTree>(std::filesystem::path(VEXIL_TEST_DATA) / "amdgpu.tree");
        setEnvironment("VEXIL_SYSFS_ROOT", (tree_->root() / "sys").string());
        setEnvironment("VEXIL_PROC_ROOT", (tree_->root() / "proc").string());
        setEnvironment("DISPLAY", "");
        ASSERT_NE(platform::openLibraryPath(VEXIL_VULKAN_STAND_IN), nullptr);
        dxgi_ = platform::openLibraryPath(VEXIL_DXGI_STAND_IN);
        ASSERT_NE(dxgi_, nullptr);
        library_ = platform::openLibraryPath(VEXIL_KERNEL_GRAPHICS);
        ASSERT_NE(library_, nullptr);
    }
    static void TearDownTestSuite() { tree_.reset(); }

    [[nodiscard]] static GraphicsObjects graphicsObjects() {
        return reinterpret_cast<GraphicsObjectsFunction>(
            platform::librarySymbol(dxgi_, graphicsObjectsFunction))();
    }
    d3dkmt::Status open(const wchar_t* path) {
        opened_ = {path, 0, {}};
        return reinterpret_cast<d3dkmt::OpenAdapterFromDeviceNameFunction>(
            platform::librarySymbol(library_, "D3DKMTOpenAdapterFromDeviceName"))(&opened_);
    }
    d3dkmt::Status ask(d3dkmt::QueryStatisticsType type, std::uint32_t node) {
        answer_ = {};
        answer_.type = type;
        answer_.adapterLuid = opened_.adapterLuid;
        answer_.query.nodeId = node;
        return reinterpret_cast<d3dkmt::QueryStatisticsFunction>(
            platform::librarySymbol(library_, "D3DKMTQueryStatistics"))(&answer_);
    }

    static inline std::unique_ptr<RecordedTree> tree_;
    static inline void* dxgi_ = nullptr;
    static inline void* library_ = nullptr;
    d3dkmt::OpenAdapterFromDeviceName opened_{};
    d3dkmt::QueryStatistics answer_{};
};

TEST_F(AdapterLuids, AreThoseOfAdaptersWhoseDriverTellsAnAddress) {
    const auto luids = platform::listAdapterLuids();
    ASSERT_EQ(luids.size(), 1U) << "one has no way to Vulkan, one no extension";
    EXPECT_EQ(luids[0].address, (PciAddress{0, 10, 0, 0}));
    EXPECT_EQ(luids[0].luid.lowPart, 7U);
    EXPECT_EQ(luids[0].luid.highPart, -1);
}

TEST_F(AdapterLuids, AreToldWithoutKeepingAnythingOfDirect3D) {
    const auto before = graphicsObjects();
    static_cast<void>(platform::listAdapterLuids());
    EXPECT_EQ(graphicsObjects().factoriesMade, before.factoriesMade + 1);
    EXPECT_EQ(graphicsObjects().objectsAlive, before.objectsAlive);
}

TEST_F(AdapterLuids, LeadFromTheDeviceToItsEngines) {
    ASSERT_EQ(open(L"/sys/bus/pci/devices/0000:0a:00.0"), d3dkmt::success);
    EXPECT_EQ(opened_.adapter, 7U);
    EXPECT_EQ(opened_.adapterLuid.lowPart, 7U);
    EXPECT_EQ(opened_.adapterLuid.highPart, -1);
    ASSERT_EQ(ask(d3dkmt::QueryStatisticsType::Adapter, 0), d3dkmt::success);
    EXPECT_EQ(answer_.queryResult.adapterInformation.nodeCount, 9U);
    ASSERT_EQ(ask(d3dkmt::QueryStatisticsType::Node, 1), d3dkmt::success);
    EXPECT_EQ(answer_.queryResult.nodeInformation.runningTime, 750'000'000) << "75 seconds of gfx";
    EXPECT_EQ(ask(d3dkmt::QueryStatisticsType::Node, 9), d3dkmt::invalidParameter);
}

TEST_F(AdapterLuids, AreNoneOfADeviceThatVulkanDoesNotKnow) {
    EXPECT_EQ(open(L"/sys/bus/pci/devices/0000:0b:00.0"), d3dkmt::invalidParameter);
    EXPECT_EQ(open(L"/sys/bus/pci/devices/0001:0a:00.0"), d3dkmt::invalidParameter);
}

TEST_F(AdapterLuids, AreAskedForOnceByAScanOfKnownAndUnknownDevices) {
    const auto before = graphicsObjects().factoriesMade;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(open(L"/sys/bus/pci/devices/0000:0a:00.0"), d3dkmt::success);
        EXPECT_EQ(open(L"/sys/bus/pci/devices/0000:00:02.0"), d3dkmt::invalidParameter);
    }
    EXPECT_LE(graphicsObjects().factoriesMade, before + 1);
}

} // namespace
} // namespace vexil::tests
