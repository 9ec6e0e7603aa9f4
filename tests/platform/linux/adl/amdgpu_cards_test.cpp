#include "platform/linux/adl/amdgpu_cards.h"

#include "platform/linux/system_roots.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace vexil::tests {
namespace {

using namespace platform;

constexpr const char* navi = "bus/pci/devices/0000:0a:00.0";
constexpr const char* polaris = "bus/pci/devices/0000:03:00.0";

class AmdgpuCards : public testing::Test {
protected:
    [[nodiscard]] std::vector<AmdgpuCard> list() const { return listAmdgpuCards(tree_.root()); }
    [[nodiscard]] AmdgpuCard card(const char* path) const {
        AmdgpuCard found;
        found.folder = tree_.root() / path;
        return found;
    }
    /// Puts other content in the place of a file.
    void replace(const std::string& path, const std::string& content) {
        tree_.remove(path);
        tree_.addFile(path, content);
    }

    RecordedTree tree_{std::string(VEXIL_TEST_DATA) + "/workstation.tree"};
};

TEST_F(AmdgpuCards, AreTheDisplayControllersThatAmdgpuRunsByAddress) {
    const auto cards = list();
    ASSERT_EQ(cards.size(), 2U) << "neither the sound function, nor a card of another driver or maker";
    EXPECT_EQ(cards[0].address.bus, 3U);
    EXPECT_EQ(cards[0].address.device, 0U);
    EXPECT_EQ(cards[0].address.function, 0U);
    EXPECT_EQ(cards[1].address.bus, 10U);
    EXPECT_EQ(cards[1].deviceId(), 0x73DFU);
    EXPECT_TRUE(cards[1].isPresent());
}

TEST_F(AmdgpuCards, IncludeThoseWithoutADisplayConnector) {
    replace("devices/pci0000:00/0000:00:01.0/0000:03:00.0/class", "0x038000\n");
    EXPECT_EQ(list().size(), 2U);
}

TEST_F(AmdgpuCards, AreOrderedByDomainFirst) {
    const std::string other = "bus/pci/devices/0001:01:00.0/";
    tree_.addFile(other + "vendor", "0x1002\n");
    tree_.addFile(other + "device", "0x744c\n");
    tree_.addFile(other + "class", "0x030000\n");
    tree_.addLink(other + "driver", "../../drivers/amdgpu");
    const auto cards = list();
    ASSERT_EQ(cards.size(), 3U);
    EXPECT_EQ(cards[2].address.domain, 1U);
    EXPECT_EQ(cards[2].address.bus, 1U);
}

TEST_F(AmdgpuCards, TellTheTemperatureOfTheEdge) { EXPECT_EQ(card(navi).millidegrees(), 47'000); }

TEST_F(AmdgpuCards, TellTheTemperatureOfTheEdgeWhateverItsPlace) {
    const std::string sensors =
        "devices/pci0000:00/0000:00:03.1/0000:08:00.0/0000:09:00.0/0000:0a:00.0/hwmon/hwmon3/";
    replace(sensors + "temp1_label", "junction\n");
    replace(sensors + "temp2_label", "edge\n");
    EXPECT_EQ(card(navi).millidegrees(), 52'000);
}

TEST_F(AmdgpuCards, TellTheOneTemperatureOfAKernelWithoutLabels) {
    EXPECT_EQ(card(polaris).millidegrees(), 44'000);
}

TEST_F(AmdgpuCards, TellTemperaturesBelowZero) {
    replace("devices/pci0000:00/0000:00:01.0/0000:03:00.0/hwmon/hwmon2/temp1_input", "-12000\n");
    EXPECT_EQ(card(polaris).millidegrees(), -12'000);
}

TEST_F(AmdgpuCards, PassOverSensorsOfAnotherDriver) {
    tree_.addFile("devices/pci0000:00/0000:00:01.0/0000:03:00.0/hwmon/hwmon0/name", "other\n");
    tree_.addFile("devices/pci0000:00/0000:00:01.0/0000:03:00.0/hwmon/hwmon0/temp1_input", "99000\n");
    EXPECT_EQ(card(polaris).millidegrees(), 44'000);
}

TEST_F(AmdgpuCards, TellTheirMemoryInBytes) {
    EXPECT_EQ(card(navi).memoryBytes(), 12'868'124'672U);
    EXPECT_EQ(card(navi).usedBytes(), 1'490'378'752U);
}

TEST_F(AmdgpuCards, TellNothingWhereFilesAreMissing) {
    tree_.remove("devices/pci0000:00/0000:00:01.0/0000:03:00.0/hwmon");
    tree_.remove("devices/pci0000:00/0000:00:01.0/0000:03:00.0/mem_info_vram_total");
    tree_.remove("devices/pci0000:00/0000:00:01.0/0000:03:00.0/mem_info_vram_used");
    EXPECT_EQ(list().size(), 2U);
    EXPECT_EQ(card(polaris).millidegrees(), std::nullopt);
    EXPECT_EQ(card(polaris).memoryBytes(), std::nullopt);
    EXPECT_EQ(card(polaris).usedBytes(), std::nullopt);
}

/// As a driver answers for a card that sleeps, and some files of sysfs always do: a folder cannot be read
/// either.
TEST_F(AmdgpuCards, TellNothingWhereFilesCannotBeRead) {
    for (const char* file : {"hwmon/hwmon2/temp1_input", "mem_info_vram_total", "mem_info_vram_used"}) {
        const auto path = std::string("devices/pci0000:00/0000:00:01.0/0000:03:00.0/") + file;
        tree_.remove(path);
        tree_.addFolder(path);
    }
    EXPECT_EQ(card(polaris).millidegrees(), std::nullopt);
    EXPECT_EQ(card(polaris).memoryBytes(), std::nullopt);
    EXPECT_EQ(card(polaris).usedBytes(), std::nullopt);
}

TEST_F(AmdgpuCards, TellNothingWhereFilesHoldNoNumber) {
    for (const char* content : {"", "\n", "N/A\n", "12abc\n", "0x12\n", "99999999999999999999999\n"}) {
        for (const char* file : {"hwmon/hwmon2/temp1_input", "mem_info_vram_total", "mem_info_vram_used"}) {
            replace(std::string("devices/pci0000:00/0000:00:01.0/0000:03:00.0/") + file, content);
        }
        EXPECT_EQ(card(polaris).millidegrees(), std::nullopt) << content;
        EXPECT_EQ(card(polaris).memoryBytes(), std::nullopt) << content;
        EXPECT_EQ(card(polaris).usedBytes(), std::nullopt) << content;
    }
}

TEST_F(AmdgpuCards, HaveNoMemoryBelowZero) {
    replace("devices/pci0000:00/0000:00:01.0/0000:03:00.0/mem_info_vram_total", "-1\n");
    EXPECT_EQ(card(polaris).memoryBytes(), std::nullopt);
}

TEST_F(AmdgpuCards, PassOverDevicesThatCannotBeReadOrAreNoDevices) {
    tree_.addFile("bus/pci/devices/README", "0x1002\n");
    tree_.addFolder("bus/pci/devices/0000:50:00.0");
    tree_.addLink("bus/pci/devices/0000:51:00.0", "../../../devices/gone");
    tree_.addFile("bus/pci/devices/0000:52:00.0.backup/vendor", "0x1002\n");
    EXPECT_EQ(list().size(), 2U);
}

TEST(AmdgpuCardsOfAMachine, AreNoneWithoutSysfs) {
    const RecordedTree empty;
    EXPECT_TRUE(listAmdgpuCards(empty.root()).empty());
    EXPECT_TRUE(listAmdgpuCards(empty.root() / "missing").empty());
}

TEST(SysfsRoot, IsSysUnlessTheEnvironmentNamesAnother) {
    unsetenv("VEXIL_SYSFS_ROOT");
    EXPECT_EQ(sysfsRoot(), "/sys");
    setenv("VEXIL_SYSFS_ROOT", "", 1);
    EXPECT_EQ(sysfsRoot(), "/sys");
    setenv("VEXIL_SYSFS_ROOT", "/elsewhere", 1);
    EXPECT_EQ(sysfsRoot(), "/elsewhere");
    unsetenv("VEXIL_SYSFS_ROOT");
}

} // namespace
} // namespace vexil::tests
