#include "platform/kernel_graphics.h"

#include "platform/linux/kernel_graphics/adapter_luids.h"
#include "platform/shared_library.h"

#include <gtest/gtest.h>

#include <string>

// The library as the module opens it. Which adapters there are is a matter of the machine's Vulkan drivers,
// and no call comes so far here.
namespace vexil::tests {
namespace {

namespace d3dkmt = platform::d3dkmt;
using platform::PciAddress;
using platform::pciAddressOfPath;

TEST(PciAddressOfPath, IsTheLastPartOfADevicePath) {
    EXPECT_EQ(pciAddressOfPath("/sys/bus/pci/devices/0000:0a:00.1"), (PciAddress{0, 10, 0, 1}));
    EXPECT_EQ(pciAddressOfPath("0001:ff:1f.7"), (PciAddress{1, 255, 31, 7}));
}

TEST(PciAddressOfPath, IsNoneInAPathOfAnotherKind) {
    for (const char* path : {"", "/sys/bus/pci/devices/", "/sys/class/drm/card0", "0a:00.0", "0000:0a:00",
                             "0000:0a:00.0/drm", "0000:0a:00.0.1"}) {
        EXPECT_EQ(pciAddressOfPath(path), std::nullopt) << path;
    }
}

class KernelGraphicsLibrary : public testing::Test {
protected:
    template <typename Function>
    [[nodiscard]] Function function(const char* name) const {
        return reinterpret_cast<Function>(platform::librarySymbol(library_, name));
    }

    void* const library_ = platform::openLibraryPath(VEXIL_KERNEL_GRAPHICS);
};

TEST_F(KernelGraphicsLibrary, OpensNothingWithoutThePathOfADevice) {
    const auto open = function<d3dkmt::OpenAdapterFromDeviceNameFunction>("D3DKMTOpenAdapterFromDeviceName");
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(open(nullptr), d3dkmt::invalidParameter);
    for (const wchar_t* path : {static_cast<const wchar_t*>(nullptr), L"", L"/sys/class/drm/card0"}) {
        d3dkmt::OpenAdapterFromDeviceName request{path, 7, {8, 9}};
        EXPECT_EQ(open(&request), d3dkmt::invalidParameter);
        EXPECT_EQ(request.adapter, 7U) << "what was not found is not written";
        EXPECT_EQ(request.adapterLuid.lowPart, 8U);
    }
}

TEST_F(KernelGraphicsLibrary, TellsNothingOfAnAdapterThatNobodyOpened) {
    const auto ask = function<d3dkmt::QueryStatisticsFunction>("D3DKMTQueryStatistics");
    ASSERT_NE(ask, nullptr);
    EXPECT_EQ(ask(nullptr), d3dkmt::invalidParameter);
    d3dkmt::QueryStatistics request{};
    request.adapterLuid = {8, 9};
    EXPECT_EQ(ask(&request), d3dkmt::invalidParameter);
}

TEST_F(KernelGraphicsLibrary, TakesEveryHandleBack) {
    const auto close = function<d3dkmt::CloseAdapterFunction>("D3DKMTCloseAdapter");
    ASSERT_NE(close, nullptr);
    const d3dkmt::CloseAdapter request{7};
    EXPECT_EQ(close(&request), d3dkmt::success);
}

} // namespace
} // namespace vexil::tests
