#include "linux/pci_devices_linux.h"

#include <gtest/gtest.h>

namespace vexil::sal {
namespace {

const std::filesystem::path data = VEXIL_TEST_DATA;

PciDeviceSource source() { return {data / "pci" / "devices", data / "pci.ids"}; }

TEST(PciDevices, AreListedInTheOrderOfTheirAddresses) {
    const auto devices = source().list({});
    ASSERT_EQ(devices.size(), 3U);
    EXPECT_EQ(devices[0].locationInformation, "PCI bus 0, device 2, function 0");
    EXPECT_EQ(devices[1].locationInformation, "PCI bus 10, device 0, function 0");
    EXPECT_EQ(devices[2].locationInformation, "PCI bus 10, device 0, function 1");
}

TEST(PciDevices, HaveIdsInTheFormOfWindows) {
    const auto card = source().list({})[1];
    EXPECT_EQ(card.hardwareIds[0], "PCI\\VEN_10DE&DEV_1C03&SUBSYS_37221458&REV_A1");
    EXPECT_EQ(card.hardwareIds[1], "PCI\\VEN_10DE&DEV_1C03&SUBSYS_37221458");
    EXPECT_EQ(card.compatibleIds.back(), "PCI\\CC_0300");
    EXPECT_EQ(card.compatibleIds[card.compatibleIds.size() - 2], "PCI\\CC_030000");
}

TEST(PciDevices, HaveTheirMakersAndTradeNames) {
    const auto card = source().list({})[1];
    EXPECT_EQ(card.manufacturer, "NVIDIA Corporation");
    EXPECT_EQ(card.description, "GeForce GTX 1060 6GB");
    EXPECT_EQ(source().list({})[0].description, "UHD Graphics 630");
}

TEST(PciDevices, HaveTheNameOfAKnownMakerOnlyWithoutADatabase) {
    PciDeviceSource nameless(data / "pci" / "devices", "");
    EXPECT_EQ(nameless.list({})[1].description, "");
    EXPECT_EQ(nameless.list({})[1].manufacturer, "NVIDIA Corporation");
}

TEST(PciDevices, AreThoseWithAGraphicsDriverWhenAskedForAnInterface) {
    const auto devices = source().list({{1, 0, 0, {}}, {}});
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_EQ(devices[0].description, "GeForce GTX 1060 6GB");
    ASSERT_EQ(devices[0].interfacePaths.size(), 1U);
    EXPECT_TRUE(devices[0].interfacePaths[0].ends_with("/0000:0a:00.0"));
}

TEST(PciDevices, AreNoneWhereThereIsNoPci) {
    EXPECT_TRUE(PciDeviceSource("/no/such/folder", "").list({}).empty());
}

} // namespace
} // namespace vexil::sal
