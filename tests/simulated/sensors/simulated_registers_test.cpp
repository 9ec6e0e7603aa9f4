#include "simulated/driver_service/simulated_registers.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using simulated::DriverServiceSection;
using simulated::SimulatedRegisters;

TEST(SimulatedRegisters, ShowTheTemperatureInIntelsForm) {
    DriverServiceSection section;
    section.temperatureCelsius = 55;
    SimulatedRegisters registers(section);
    std::uint64_t value = 0;
    EXPECT_EQ(registers.readMsr(0x19C, &value), 0);
    EXPECT_EQ(value, 0x802D0000U) << "valid, 45 below the maximum";
    EXPECT_EQ(registers.readMsr(0x1A2, &value), 0);
    EXPECT_EQ(value, 0x640000U);
    EXPECT_NE(registers.readMsr(0x10, &value), 0);
}

TEST(SimulatedRegisters, ShowTheTemperatureInAmdsFormBehindItsAddressOnly) {
    DriverServiceSection section;
    section.temperatureCelsius = -17;
    SimulatedRegisters registers(section);
    std::uint32_t value = 0;
    const PciConfigRequest read{0, 0, 0, 0x64, 4, nullptr};
    EXPECT_NE(registers.readPciConfig(read, &value), 0) << "nothing was chosen yet";
    std::uint32_t address = 0x59800;
    EXPECT_EQ(registers.writePciConfig({0, 0, 0, 0x60, 4, &address}), 0);
    EXPECT_EQ(registers.readPciConfig(read, &value), 0);
    EXPECT_EQ(value, 0x20080000U);
    EXPECT_EQ(registers.readPciConfig({0, 24, 3, 0xA4, 4, nullptr}, &value), 0);
    EXPECT_EQ(value, 0x20030000U);
}

TEST(SimulatedRegisters, PutListedOnesBefore) {
    DriverServiceSection section;
    section.msrs = {{0x19C, 0x1234, 0}, {0x1A2, 0, 9}};
    section.pciRegisters = {{0, 0, 0, 0x60, 0, 5}};
    SimulatedRegisters registers(section);
    std::uint64_t value = 0;
    EXPECT_EQ(registers.readMsr(0x19C, &value), 0);
    EXPECT_EQ(value, 0x1234U);
    EXPECT_EQ(registers.readMsr(0x1A2, &value), 9);
    std::uint32_t address = 0x59800;
    EXPECT_EQ(registers.writePciConfig({0, 0, 0, 0x60, 4, &address}), 5);
}

TEST(SimulatedRegisters, FailWhileTheDriverIsNotReady) {
    DriverServiceSection section;
    section.ready = false;
    SimulatedRegisters registers(section);
    std::uint64_t value = 0;
    EXPECT_EQ(registers.isReady(), 0);
    EXPECT_NE(registers.readMsr(0x19C, &value), 0);
}

} // namespace
} // namespace vexil::tests
