#include "module/video_card/direct3d/adapter_memory.h"
#include "module/video_card/direct3d/extended_video_memory_test.h"
#include "module/video_card/direct3d/video_memory_test.h"
#include "support/card_under_test.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

// How much memory a card has, how much of it is tested, and how many surfaces that makes.
namespace vexil::tests {
namespace {

using module::video_card::adapterMemoryBytes;
using module::video_card::Device;
using module::video_card::Dx11ExtendedVideoMemoryTest;
using module::video_card::Dx11VideoMemoryTest;
using module::video_card::testableBytes;

constexpr std::uint64_t mebibyte = 1 << 20;
constexpr std::uint64_t gibibyte = 1 << 30;

/// A card that is described but has no device.
std::shared_ptr<Device> cardWith(const std::string& name, UINT vendor, std::uint64_t dedicated,
                                 std::uint64_t shared,
                                 std::optional<std::uint64_t> freeMemory = std::nullopt) {
    static sal::TextHandler strings;
    static sal::NumberText numbers;
    module::video_card::AdapterRecord record;
    record.name = name;
    record.location = "01:00.0";
    auto device = std::make_shared<Device>(record, module::video_card::DeviceServices{strings, numbers, 0});
    module::video_card::Dx11Context context;
    context.adapterInfo.desc.VendorId = vendor;
    context.adapterInfo.desc.DedicatedVideoMemory = dedicated;
    context.adapterInfo.desc.SharedSystemMemory = shared;
    device->setDirect3D(context);
    if (freeMemory) {
        device->setStatistics(std::make_unique<FreeMemory>(*freeMemory));
    }
    return device;
}

std::uint32_t surfacesOf(const Dx11VideoMemoryTest& test, const std::shared_ptr<Device>& device) {
    std::uint32_t count = 0xFFFF;
    EXPECT_EQ(test.surfaceCount(device.get(), {}, &count), 0U);
    return count;
}

TEST(AdapterMemory, IsTheSharedOneOfAnIntelCard) {
    EXPECT_EQ(adapterMemoryBytes(*cardWith("Intel(R) UHD Graphics 630", 0x8086, 128, 4096)), 4096U);
}

TEST(AdapterMemory, IsTheDedicatedOneOfAnIntelArcCard) {
    EXPECT_EQ(adapterMemoryBytes(*cardWith("Intel(R) Arc(TM) A770", 0x8086, 128, 4096)), 128U);
}

TEST(AdapterMemory, IsTheSharedOneOfAnIntelArcCardWithoutDedicatedMemory) {
    EXPECT_EQ(adapterMemoryBytes(*cardWith("Intel(R) Arc(TM) A770", 0x8086, 0, 4096)), 4096U);
}

TEST(AdapterMemory, IsTheDedicatedOneOfAnyOtherCardAndElseTheSharedOne) {
    EXPECT_EQ(adapterMemoryBytes(*cardWith("GeForce", 0x10DE, 128, 4096)), 128U);
    EXPECT_EQ(adapterMemoryBytes(*cardWith("Radeon", 0x1002, 0, 4096)), 4096U);
}

TEST(AdapterMemory, IsTakenFromTheVendorThatDirect3DNames) {
    // 0x18086 ends in the same digits and is another vendor.
    EXPECT_EQ(adapterMemoryBytes(*cardWith("UHD Graphics", 0x18086, 128, 4096)), 128U);
}

TEST(AdapterMemory, LooksForArcAsItIsWritten) {
    EXPECT_EQ(adapterMemoryBytes(*cardWith("Intel ARC", 0x8086, 128, 4096)), 4096U);
}

TEST(TestableBytes, AreTheFreeOnesAsTheyStand) {
    EXPECT_EQ(testableBytes(*cardWith("GeForce", 0x10DE, 8 * gibibyte, 0, 123456789)), 123456789U);
}

TEST(TestableBytes, AreFourFifthsOfTheAdapterMemoryInSinglePrecision) {
    EXPECT_EQ(testableBytes(*cardWith("UHD Graphics", 0x8086, 0, 10 * mebibyte)),
              static_cast<std::uint64_t>(10485760.0F * 0.8F));
    // 0.8f is a little more than 0.8, and 2^33 is exact: the product shows that it is single precision.
    EXPECT_EQ(testableBytes(*cardWith("GeForce", 0x10DE, 8 * gibibyte, 0)), 6871947776U);
    // Not representable in single precision: 2^24 + 1 rounds to 2^24.
    EXPECT_EQ(testableBytes(*cardWith("GeForce", 0x10DE, (1 << 24) + 1, 0)), 13421773U);
}

TEST(SurfaceCount, IsTheTestableMemoryInSurfacesUpToFifty) {
    const Dx11VideoMemoryTest test;
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 10 * mebibyte)), 2U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, gibibyte)), 50U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 4 * mebibyte - 1)), 0U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 4 * mebibyte)), 1U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 200 * mebibyte - 1)), 49U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 200 * mebibyte)), 50U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 204 * mebibyte)), 50U);
}

TEST(SurfaceCount, HasNoLimitInTheExtendedTest) {
    const Dx11ExtendedVideoMemoryTest test;
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 8 * gibibyte)), 2048U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 204 * mebibyte)), 51U);
    EXPECT_EQ(surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, 4 * mebibyte - 1)), 0U);
}

TEST(SurfaceCount, IsOf32BitsWithASignInTheQuickTestAndWithoutOneInTheExtendedTest) {
    const auto surfacesWith = [](const Dx11VideoMemoryTest& test, std::uint64_t surfaces) {
        return surfacesOf(test, cardWith("GeForce", 0x10DE, 0, 0, surfaces << 22));
    };
    constexpr std::uint64_t mostWithSign = 0x7FFFFFFF;
    constexpr std::uint64_t carry = std::uint64_t{1} << 32;
    const Dx11VideoMemoryTest quick;
    EXPECT_EQ(surfacesWith(quick, mostWithSign), 50U);
    EXPECT_EQ(surfacesWith(quick, mostWithSign + 1), 0U)
        << "never more than fifty, however that number reads";
    EXPECT_EQ(surfacesWith(quick, carry + 7), 7U);
    const Dx11ExtendedVideoMemoryTest extended;
    EXPECT_EQ(surfacesWith(extended, mostWithSign + 1), 0x80000000U);
    EXPECT_EQ(surfacesWith(extended, carry - 1), 0xFFFFFFFFU);
    EXPECT_EQ(surfacesWith(extended, carry + 7), 7U);
}

TEST(SurfaceCount, CannotBeToldForADeviceThatIsNoVideoCard) {
    std::uint32_t count = 7;
    EXPECT_NE(Dx11VideoMemoryTest().surfaceCount(nullptr, {}, &count), 0U);
    EXPECT_NE(Dx11ExtendedVideoMemoryTest().surfaceCount(nullptr, {}, &count), 0U);
}

} // namespace
} // namespace vexil::tests
