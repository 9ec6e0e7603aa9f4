#include "module/cpu/vxk_service_interface.h"

#include "support/fake_cpu_machine.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using module::cpu::VXKServiceInterface;
using Calls = std::vector<std::string>;

TEST(VxkServiceInterface, MakesTheServiceAndGivesItBackBeforeItsLibrary) {
    FakeCpuMachine machine;
    {
        VXKServiceInterface service(machine);
        EXPECT_TRUE(service.isReady());
    }
    EXPECT_EQ(machine.calls,
              (Calls{"open", "resolve CreateVXKService", "resolve DestroyVXKService", "destroy", "release"}));
}

TEST(VxkServiceInterface, FailsEveryOperationWithoutTheLibrary) {
    FakeCpuMachine machine;
    machine.hasLibrary = false;
    {
        VXKServiceInterface service(machine);
        std::uint64_t wide = 0;
        std::uint32_t value = 0;
        EXPECT_FALSE(service.isReady());
        EXPECT_EQ(service.readMsr(0x19C, wide), 1);
        EXPECT_EQ(service.readPciConfig({}, value), 1);
        EXPECT_EQ(service.writePciConfig({}), 1);
    }
    EXPECT_EQ(machine.calls, Calls{"open"});
}

TEST(VxkServiceInterface, FailsEveryOperationWithoutTheFunctionThatMakesTheService) {
    FakeCpuMachine machine;
    machine.hasCreate = false;
    VXKServiceInterface service(machine);
    std::uint64_t value = 0;
    EXPECT_EQ(service.readMsr(0x19C, value), 1);
}

TEST(VxkServiceInterface, FailsEveryOperationWithoutTheService) {
    FakeCpuMachine machine;
    machine.createsService = false;
    VXKServiceInterface service(machine);
    std::uint64_t value = 0;
    EXPECT_EQ(service.readMsr(0x19C, value), 1);
}

TEST(VxkServiceInterface, ReleasesALibraryThatCannotTakeItsServiceBack) {
    FakeCpuMachine machine;
    machine.hasDestroy = false;
    { VXKServiceInterface service(machine); }
    EXPECT_EQ(machine.calls.back(), "release");
}

TEST(VxkServiceInterface, AsksWhetherTheDriverIsReadyBeforeEveryUse) {
    FakeCpuMachine machine;
    machine.service.msrs[0x10] = 5;
    VXKServiceInterface service(machine);
    std::uint64_t value = 0;
    EXPECT_EQ(service.readMsr(0x10, value), 0);
    machine.service.ready = 0;
    EXPECT_EQ(service.readMsr(0x10, value), 1);
    machine.service.ready = -3;
    EXPECT_EQ(service.readMsr(0x10, value), 0) << "anything but 0 is ready";
}

TEST(VxkServiceInterface, ReachesNoPciConfigurationWhileTheDriverIsNotReady) {
    FakeCpuMachine machine;
    machine.service.pciRegisters[100] = 5;
    VXKServiceInterface service(machine);
    std::uint32_t value = 0;
    const PciConfigRequest read{0, 0, 0, 100, 4, nullptr};
    const PciConfigRequest write{0, 0, 0, 96, 4, &value};
    machine.service.ready = 0;
    EXPECT_EQ(service.readPciConfig(read, value), 1);
    EXPECT_EQ(service.writePciConfig(write), 1);
    EXPECT_TRUE(machine.service.accesses.empty());
    machine.service.ready = 1;
    EXPECT_EQ(service.readPciConfig(read, value), 0);
    EXPECT_EQ(value, 5U);
    EXPECT_EQ(service.writePciConfig(write), 0);
    EXPECT_EQ(machine.service.accesses.size(), 2U);
}

TEST(VxkServiceInterface, MakesOneStatusOfEveryFailureOfTheDriver) {
    FakeCpuMachine machine;
    machine.service.writeStatus = -12;
    VXKServiceInterface service(machine);
    std::uint32_t value = 0;
    std::uint64_t wide = 0;
    EXPECT_EQ(service.readMsr(0x10, wide), 1);
    EXPECT_EQ(service.readPciConfig({}, value), 1);
    EXPECT_EQ(service.writePciConfig({0, 0, 0, 0x60, 4, &value}), 1);
}

} // namespace
} // namespace vexil::tests
