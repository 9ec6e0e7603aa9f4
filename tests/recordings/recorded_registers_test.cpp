#include "module/cpu/cpu_machine.h"
#include "module/cpu/temperature_monitor.h"
#include "platform/shared_library.h"
#include "support/fake_cpu_machine.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <sched.h>

#include <cstdlib>
#include <fstream>
#include <string>

// Registers as real machines showed them, through the driver service's library and the processor's
// temperature.
namespace vexil::tests {
namespace {

using module::cpu::TemperatureMonitor;

/// A machine whose processor is of that maker, whose driver service is the library and whose registers were
/// recorded.
class RecordedMachine final : public module::cpu::CpuMachine {
public:
    RecordedMachine(const char* tree, const char* vendor, const char* caption)
        : tree_(std::string(VEXIL_TEST_DATA) + "/" + tree) {
        identity_.vendor = vendor;
        identity_.caption = caption;
        setenv("VEXIL_DEV_ROOT", (tree_.root() / "dev").c_str(), 1);
        setenv("VEXIL_SYSFS_ROOT", (tree_.root() / "sys").c_str(), 1);
    }
    ~RecordedMachine() override {
        unsetenv("VEXIL_DEV_ROOT");
        unsetenv("VEXIL_SYSFS_ROOT");
    }

    platform::CpuidRegisters cpuid(std::uint32_t leaf) override { return identity_.cpuid(leaf); }
    std::unique_ptr<system::Cim> makeCim() override { return identity_.makeCim(); }
    void* openDriverService() override { return platform::openLibraryPath(VEXIL_DRIVER_SERVICE); }
    void* resolve(void* library, const char* symbol) override {
        return platform::librarySymbol(library, symbol);
    }
    void release(void* library) override { platform::closeLibrary(library); }

    [[nodiscard]] std::filesystem::path file(const char* path) const { return tree_.root() / path; }

private:
    RecordedTree tree_;
    FakeCpuMachine identity_;
};

/// Registers were recorded of processor 0.
class OnProcessorZero {
public:
    OnProcessorZero() {
        sched_getaffinity(0, sizeof(before_), &before_);
        cpu_set_t zero;
        CPU_ZERO(&zero);
        CPU_SET(0, &zero);
        EXPECT_EQ(sched_setaffinity(0, sizeof(zero), &zero), 0);
    }
    OnProcessorZero(const OnProcessorZero&) = delete;
    OnProcessorZero& operator=(const OnProcessorZero&) = delete;
    ~OnProcessorZero() { sched_setaffinity(0, sizeof(before_), &before_); }

private:
    cpu_set_t before_{};
};

TEST(RecordedRegisters, TellTheTemperatureOfAHaswellProcessor) {
    const OnProcessorZero pinned;
    RecordedMachine machine("haswell_registers.tree", "GenuineIntel", "Intel64 Family 6 Model 69 Stepping 1");
    double celsius = 0;
    EXPECT_EQ(TemperatureMonitor(machine).getPackageTemperature(celsius), 0);
    EXPECT_EQ(celsius, 46.0) << "which another program read from them, too";
}

TEST(RecordedRegisters, TellTheTemperatureOfAZenProcessor) {
    RecordedMachine machine("zen_registers.tree", "AuthenticAMD", "AMD64 Family 23 Model 1 Stepping 1");
    double celsius = 0;
    EXPECT_EQ(TemperatureMonitor(machine).getPackageTemperature(celsius), 0);
    EXPECT_EQ(celsius, 55.25) << "834 eighths of a degree, from -49";

    std::ifstream config(machine.file("sys/bus/pci/devices/0000:00:00.0/config"), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(config), {}};
    ASSERT_EQ(bytes.size(), 256U);
    EXPECT_EQ(bytes.substr(0x60, 4), std::string("\x00\x98\x05\x00", 4)) << "the register asked for";
    EXPECT_EQ(bytes.substr(0, 4), "\x22\x10\x50\x14") << "nothing else is written";
}

TEST(RecordedRegisters, TellNoTemperatureWhereAVirtualMachineShowsNone) {
    const OnProcessorZero pinned;
    double celsius = -1;
    RecordedMachine intel("virtual_machine.tree", "GenuineIntel", "Intel64 Family 6 Model 69 Stepping 1");
    EXPECT_EQ(TemperatureMonitor(intel).getPackageTemperature(celsius), 1) << "it has no thermal registers";
    EXPECT_EQ(celsius, -1);
    RecordedMachine amd("virtual_machine.tree", "AuthenticAMD", "AMD64 Family 21 Model 48 Stepping 1");
    EXPECT_EQ(TemperatureMonitor(amd).getPackageTemperature(celsius), 1) << "it has no north bridge";
    EXPECT_EQ(celsius, -1);
}

} // namespace
} // namespace vexil::tests
