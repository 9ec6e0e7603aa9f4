#include "module/cpu/temperature_monitor.h"

#include "support/fake_cpu_machine.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexil::tests {
namespace {

using module::cpu::TemperatureMonitor;

TEST(TemperatureMonitor, ReadsAnIntelProcessorWithoutAskingForItsFamily) {
    FakeCpuMachine machine;
    machine.service.msrs = {{0x19C, 1ULL << 31 | 45U << 16}, {0x1A2, 100U << 16}};
    double celsius = 0;
    TemperatureMonitor monitor(machine);
    EXPECT_EQ(monitor.getPackageTemperature(celsius), 0);
    EXPECT_EQ(celsius, 55.0);
    EXPECT_TRUE(machine.queries.empty());
}

TEST(TemperatureMonitor, ReadsAnAmdProcessor) {
    FakeCpuMachine machine;
    machine.vendor = "AuthenticAMD";
    machine.caption = "AMD64 Family 25 Model 33 Stepping 0";
    machine.service.pciRegisters = {{100, 256U << 21}};
    double celsius = 0;
    TemperatureMonitor monitor(machine);
    EXPECT_EQ(monitor.getPackageTemperature(celsius), 0);
    EXPECT_EQ(celsius, 32.0);
}

TEST(TemperatureMonitor, IsNotMadeForAProcessorOfAnUnknownMaker) {
    for (const char* vendor : {"HygonGenuine", "genuineintel", "CentaurHauls"}) {
        FakeCpuMachine machine;
        machine.vendor = vendor;
        try {
            const TemperatureMonitor monitor(machine);
            FAIL() << vendor;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Failed to initialize the TemperatureMonitor object because the CPU "
                                       "vendor is unknown.");
        }
    }
}

TEST(TemperatureMonitor, IsNotMadeForAnAmdProcessorOfAnUnknownFamily) {
    FakeCpuMachine machine;
    machine.vendor = "AuthenticAMD";
    machine.caption = "AMD64 Family 26 Model 2 Stepping 1";
    EXPECT_THROW(TemperatureMonitor monitor(machine), std::runtime_error);
}

TEST(TemperatureMonitor, IsMadeWithoutADriverServiceAndFailsEachReading) {
    FakeCpuMachine machine;
    machine.hasLibrary = false;
    double celsius = -1;
    TemperatureMonitor monitor(machine);
    EXPECT_EQ(monitor.getPackageTemperature(celsius), 1);
    EXPECT_EQ(celsius, -1);
}

TEST(TemperatureMonitor, KeepsTheLibraryLoadedUntilItEnds) {
    FakeCpuMachine machine;
    {
        const TemperatureMonitor monitor(machine);
        EXPECT_NE(machine.calls.back(), "release");
    }
    EXPECT_EQ(machine.calls.back(), "release");
}

} // namespace
} // namespace vexil::tests
