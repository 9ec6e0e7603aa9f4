#include "linux/register_files_linux.h"

#include "platform/shared_library.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <sched.h>
#include <unistd.h>

namespace vexil::tests {
namespace {

using driver_service::RegisterFiles;

/// Bytes at their places in a file whose other bytes are 0, least significant first.
std::string bytesAt(std::size_t size, std::size_t offset, std::uint64_t value, std::size_t width) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < width; ++i) {
        text[offset + i] = static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return text;
}

class RegisterFilesTest : public testing::Test {
protected:
    void addMsr(std::uint32_t reg, std::uint64_t value) {
        const auto text = bytesAt(0x200, reg, value, 8);
        tree_.addFile("dev/cpu/0/msr", text);
        // The calling thread may run on any processor of the machine.
        for (long i = 1; i < sysconf(_SC_NPROCESSORS_CONF); ++i) {
            tree_.addFile("dev/cpu/" + std::to_string(i) + "/msr", text);
        }
    }

    std::string content(const std::string& path) {
        std::ifstream stream(tree_.root() / path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    RecordedTree tree_;
    RegisterFiles service_{tree_.root() / "dev", tree_.root() / "sys"};
    std::uint64_t wide_ = 1;
    std::uint32_t value_ = 1;
};

TEST_F(RegisterFilesTest, AreNotReadyOnAMachineThatShowsNoRegisters) {
    EXPECT_EQ(service_.isReady(), 0);
    EXPECT_NE(service_.readMsr(0x19C, &wide_), 0);
    EXPECT_NE(service_.readPciConfig({0, 24, 3, 0xA4, 4, nullptr}, &value_), 0);
    EXPECT_NE(service_.writePciConfig({0, 0, 0, 0x60, 4, &value_}), 0);
    EXPECT_EQ(wide_, 1U);
    EXPECT_EQ(value_, 1U);
}

TEST_F(RegisterFilesTest, AreReadyWithEitherDoorToTheRegisters) {
    addMsr(0, 0);
    EXPECT_NE(service_.isReady(), 0);
    tree_.remove("dev");
    EXPECT_EQ(service_.isReady(), 0);
    tree_.addFile("sys/bus/pci/devices/0000:00:00.0/config", std::string(256, '\0'));
    EXPECT_NE(service_.isReady(), 0);
}

TEST_F(RegisterFilesTest, ReadAModelSpecificRegisterAtItsNumber) {
    addMsr(0x19C, 0x0000'0000'8837'0000);
    EXPECT_EQ(service_.readMsr(0x19C, &wide_), 0);
    EXPECT_EQ(wide_, 0x88370000U);
    EXPECT_NE(service_.readMsr(0x1FC, &wide_), 0) << "the file ends within the register";
}

TEST_F(RegisterFilesTest, ReadTheRegisterOfTheThreadsOwnProcessor) {
    addMsr(0x10, 1);
    const auto processor = sched_getcpu();
    cpu_set_t before;
    cpu_set_t own;
    ASSERT_EQ(sched_getaffinity(0, sizeof(before), &before), 0);
    CPU_ZERO(&own);
    CPU_SET(static_cast<std::size_t>(processor), &own);
    ASSERT_EQ(sched_setaffinity(0, sizeof(own), &own), 0);
    tree_.addFile("dev/cpu/" + std::to_string(processor) + "/msr", bytesAt(0x200, 0x10, 99, 8));
    EXPECT_EQ(service_.readMsr(0x10, &wide_), 0);
    EXPECT_EQ(wide_, 99U);
    sched_setaffinity(0, sizeof(before), &before);
}

TEST_F(RegisterFilesTest, ReadConfigurationSpaceInEachWidth) {
    tree_.addFile("sys/bus/pci/devices/0000:00:18.3/config", bytesAt(4096, 0xA4, 0x44332211, 4));
    const PciConfigRequest request{0, 24, 3, 0xA4, 4, nullptr};
    EXPECT_EQ(service_.readPciConfig(request, &value_), 0);
    EXPECT_EQ(value_, 0x44332211U);
    EXPECT_EQ(service_.readPciConfig({0, 24, 3, 0xA4, 2, nullptr}, &value_), 0);
    EXPECT_EQ(value_, 0x2211U);
    EXPECT_EQ(service_.readPciConfig({0, 24, 3, 0xA5, 1, nullptr}, &value_), 0);
    EXPECT_EQ(value_, 0x22U);
}

TEST_F(RegisterFilesTest, WriteConfigurationSpaceInPlace) {
    const std::string path = "sys/bus/pci/devices/0000:00:00.0/config";
    tree_.addFile(path, std::string(256, '\0'));
    std::uint32_t address = 0x59800;
    EXPECT_EQ(service_.writePciConfig({0, 0, 0, 0x60, 4, &address}), 0);
    EXPECT_EQ(content(path), bytesAt(256, 0x60, 0x59800, 4));
}

TEST_F(RegisterFilesTest, FailForTheShortSpaceThatUsersWithoutRightsAreShown) {
    tree_.addFile("sys/bus/pci/devices/0000:00:18.3/config", std::string(64, '\0'));
    EXPECT_NE(service_.readPciConfig({0, 24, 3, 0xA4, 4, nullptr}, &value_), 0);
}

TEST_F(RegisterFilesTest, RefuseAnAddressThatNoDeviceHas) {
    tree_.addFile("sys/bus/pci/devices/0000:00:00.0/config", std::string(4096, '\0'));
    const PciConfigRequest good{0, 0, 0, 0x60, 4, nullptr};
    ASSERT_EQ(service_.readPciConfig(good, &value_), 0);
    for (const auto& bad :
         {PciConfigRequest{256, 0, 0, 0x60, 4, nullptr},
          PciConfigRequest{0x1'0000'0000, 0, 0, 0x60, 4, nullptr},
          PciConfigRequest{0, 32, 0, 0x60, 4, nullptr}, PciConfigRequest{0, 0, 8, 0x60, 4, nullptr},
          PciConfigRequest{0, 0, 0, 0x60, 3, nullptr}, PciConfigRequest{0, 0, 0, 0x60, 0, nullptr},
          PciConfigRequest{0, 0, 0, 0x60, 8, nullptr}, PciConfigRequest{0, 0, 0, 0x62, 4, nullptr},
          PciConfigRequest{0, 0, 0, 0x1000, 4, nullptr}, PciConfigRequest{0, 0, 0, 0xFFFFFFFC, 4, nullptr}}) {
        EXPECT_NE(service_.readPciConfig(bad, &value_), 0)
            << bad.bus << " " << bad.device << " " << bad.function << " " << bad.offset << " " << bad.width;
        auto write = bad;
        write.value = &value_;
        EXPECT_NE(service_.writePciConfig(write), 0);
    }
    EXPECT_NE(service_.writePciConfig(good), 0) << "there is no value";
    EXPECT_NE(service_.readPciConfig(good, nullptr), 0);
}

TEST(DriverServiceStandIn, IsMadeAndGivenBackThroughItsExports) {
    const RecordedTree empty;
    setenv("VEXIL_DEV_ROOT", empty.root().c_str(), 1);
    setenv("VEXIL_SYSFS_ROOT", empty.root().c_str(), 1);
    void* library = platform::openLibraryPath(VEXIL_DRIVER_SERVICE);
    ASSERT_NE(library, nullptr);
    const auto create =
        reinterpret_cast<CreateVXKServiceFunction>(platform::librarySymbol(library, "CreateVXKService"));
    const auto destroy =
        reinterpret_cast<DestroyVXKServiceFunction>(platform::librarySymbol(library, "DestroyVXKService"));
    ASSERT_TRUE(create != nullptr && destroy != nullptr);
    auto* service = create();
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(service->isReady(), 0) << "this machine shows no registers";
    destroy(service);
    destroy(nullptr);
    unsetenv("VEXIL_DEV_ROOT");
    unsetenv("VEXIL_SYSFS_ROOT");
}

} // namespace
} // namespace vexil::tests
