#include "module/cpu/amd_registers.h"

#include "support/fake_cpu_machine.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using namespace module::cpu;

constexpr std::uint32_t rangeBits = 3U << 16;

TEST(ZenTemperature, CountsInEighthsOfADegree) {
    EXPECT_EQ(zenTemperature(0x00B00000), 0.625) << "the reading is 5";
}

TEST(ZenTemperature, StartsAtMinusFortyNineWithBitNineteen) { EXPECT_EQ(zenTemperature(0x20080000), -17.0); }

TEST(ZenTemperature, TakesNoNoticeOfTheOtherFamiliesRangeBits) {
    EXPECT_EQ(zenTemperature(0x20000000 | rangeBits), 32.0);
}

TEST(NorthBridgeTemperature, StartsAtMinusFortyNineWithBothRangeBits) {
    EXPECT_EQ(northBridgeTemperature(256U << 21), 32.0);
    EXPECT_EQ(northBridgeTemperature(256U << 21 | 1U << 16), 32.0);
    EXPECT_EQ(northBridgeTemperature(256U << 21 | 1U << 17), 32.0);
    EXPECT_EQ(northBridgeTemperature(256U << 21 | rangeBits), -17.0);
}

TEST(Family15EarlyTemperature, CountsInEighthsOutsideTheLowRange) {
    EXPECT_EQ(family15EarlyTemperature(2044U << 21), 255.5);
    EXPECT_EQ(family15EarlyTemperature(2044U << 21 | 1U << 16), 255.5);
}

TEST(Family15EarlyTemperature, HasFixedEndsInTheLowRange) {
    EXPECT_EQ(family15EarlyTemperature(0U << 21 | rangeBits), -49.0);
    EXPECT_EQ(family15EarlyTemperature(3U << 21 | rangeBits), -49.0);
    EXPECT_EQ(family15EarlyTemperature(4U << 21 | rangeBits), -48.5);
    EXPECT_EQ(family15EarlyTemperature(7U << 21 | rangeBits), -48.5);
    EXPECT_EQ(family15EarlyTemperature(8U << 21 | rangeBits), -48.0) << "8 shifted right by 2 is 2";
    EXPECT_EQ(family15EarlyTemperature(2043U << 21 | rangeBits), 206.0);
    EXPECT_EQ(family15EarlyTemperature(2044U << 21 | rangeBits), 206.5);
    EXPECT_EQ(family15EarlyTemperature(2047U << 21 | rangeBits), 206.5);
}

class AmdReaders : public testing::Test {
protected:
    const FakeService::Access& access(std::size_t place) const { return machine_.service.accesses.at(place); }

    static void expectRequest(const PciConfigRequest& request, std::uint32_t device, std::uint32_t function,
                              std::uint32_t offset) {
        EXPECT_EQ(request.bus, 0U);
        EXPECT_EQ(request.device, device);
        EXPECT_EQ(request.function, function);
        EXPECT_EQ(request.offset, offset);
        EXPECT_EQ(request.width, 4U);
    }

    FakeCpuMachine machine_;
    VXKServiceInterface service_{machine_};
    double celsius_ = -1;
};

TEST_F(AmdReaders, ReadTheNorthBridgesReportedTemperature) {
    machine_.service.pciRegisters[164] = 256U << 21;
    for (const auto read : {readNorthBridge, readFamily15Early}) {
        EXPECT_EQ(read(service_, celsius_), 0);
        EXPECT_EQ(celsius_, 32.0);
        expectRequest(machine_.service.accesses.back().request, 24, 3, 0xA4);
    }
    machine_.service.pciRegisters[164] = 2044U << 21 | rangeBits;
    EXPECT_EQ(readNorthBridge(service_, celsius_), 0);
    EXPECT_EQ(celsius_, 206.5) << "255.5 less 49";
    machine_.service.pciRegisters[164] = 2047U << 21 | rangeBits;
    readNorthBridge(service_, celsius_);
    EXPECT_EQ(celsius_, 206.875);
    readFamily15Early(service_, celsius_);
    EXPECT_EQ(celsius_, 206.5) << "each family in its own way";
}

TEST_F(AmdReaders, ReachFamilyFifteensLateRegisterThroughItsAddress) {
    machine_.service.pciRegisters[188] = 256U << 21 | rangeBits;
    EXPECT_EQ(readFamily15Late(service_, celsius_), 0);
    EXPECT_EQ(celsius_, -17.0);
    ASSERT_EQ(machine_.service.accesses.size(), 2U);
    EXPECT_TRUE(access(0).isWrite);
    expectRequest(access(0).request, 0, 0, 184);
    EXPECT_EQ(access(0).value, 0xD8200CA4);
    EXPECT_FALSE(access(1).isWrite);
    expectRequest(access(1).request, 0, 0, 188);
    machine_.service.pciRegisters[188] = 2047U << 21 | rangeBits;
    EXPECT_EQ(readFamily15Late(service_, celsius_), 0);
    EXPECT_EQ(celsius_, 206.875) << "without the ends that the family's early models have";
}

TEST_F(AmdReaders, ReachZensRegisterThroughItsAddress) {
    machine_.service.pciRegisters[100] = 0x20080000;
    EXPECT_EQ(readZen(service_, celsius_), 0);
    EXPECT_EQ(celsius_, -17.0);
    ASSERT_EQ(machine_.service.accesses.size(), 2U);
    EXPECT_TRUE(access(0).isWrite);
    expectRequest(access(0).request, 0, 0, 96);
    EXPECT_EQ(access(0).value, 0x59800U);
    EXPECT_FALSE(access(1).isWrite);
    expectRequest(access(1).request, 0, 0, 100);
}

TEST_F(AmdReaders, FailWithStatusOneWhenARegisterCannotBeRead) {
    for (const auto read : {readNorthBridge, readFamily15Early, readFamily15Late, readZen}) {
        EXPECT_EQ(read(service_, celsius_), 1);
        EXPECT_EQ(celsius_, -1);
    }
}

TEST_F(AmdReaders, ReachNothingWhileTheDriverIsNotReady) {
    machine_.service.ready = 0;
    machine_.service.pciRegisters = {{164, 1}, {188, 1}, {100, 1}};
    for (const auto read : {readNorthBridge, readFamily15Early, readFamily15Late, readZen}) {
        EXPECT_EQ(read(service_, celsius_), 1);
        EXPECT_EQ(celsius_, -1);
    }
    EXPECT_TRUE(machine_.service.accesses.empty());
}

TEST_F(AmdReaders, FailBeforeReadingWhenTheAddressCannotBeWritten) {
    machine_.service.writeStatus = 1;
    machine_.service.pciRegisters = {{188, 1}, {100, 1}};
    for (const auto read : {readFamily15Late, readZen}) {
        machine_.service.accesses.clear();
        EXPECT_EQ(read(service_, celsius_), 1);
        EXPECT_EQ(machine_.service.accesses.size(), 1U);
    }
}

} // namespace
} // namespace vexil::tests
