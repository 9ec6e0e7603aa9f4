#include "module/video_card/adapter_list.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

namespace vexil::module::video_card {
namespace {

using tests::FakeDevice;

class AdapterListTest : public testing::Test {
protected:
    std::vector<AdapterRecord> list() { return listAdapters(machine_, {&machine_.list, &machine_}); }

    tests::FakeMachine machine_;
};

TEST_F(AdapterListTest, TakesARecordFromThePropertiesOfADisplayController) {
    machine_.list.devices = {FakeDevice::displayController("GeForce GTX 1060", "NVIDIA", "10DE", 10)};
    machine_.cim["DriverProviderName = 'NVIDIA'"] = "27.21.14.5671";
    const auto records = list();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].name, "GeForce GTX 1060");
    EXPECT_EQ(records[0].manufacturer, "NVIDIA");
    EXPECT_EQ(records[0].vendorId, "10DE");
    EXPECT_EQ(records[0].deviceId, "1C03");
    EXPECT_EQ(records[0].location, "0a:00.0");
    EXPECT_EQ(records[0].driverVersion, "27.21.14.5671");
    EXPECT_EQ(records[0].reservedText, "");
    EXPECT_EQ(records[0].reservedFlag, 1U);
    EXPECT_EQ(records[0].reservedNumber, 0U);
    EXPECT_TRUE(records[0].adapterLuids.empty());
    EXPECT_TRUE(records[0].devicePaths.empty());
}

TEST_F(AdapterListTest, AsksFirstForDisplayInterfacesAndThenForEverything) {
    list();
    ASSERT_EQ(machine_.list.filters.size(), 2U);
    // {1CA05180-A699-450A-9A0C-DE4FBE3DDD89} and {4D36E968-E325-11CE-BFC1-08002BE10318}
    EXPECT_EQ(machine_.list.filters[0].interfaceGuid,
              (DeviceGuid{0x1CA05180, 0xA699, 0x450A, {0x9A, 0x0C, 0xDE, 0x4F, 0xBE, 0x3D, 0xDD, 0x89}}));
    EXPECT_EQ(machine_.list.filters[0].classGuid,
              (DeviceGuid{0x4D36E968, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}}));
    EXPECT_EQ(machine_.list.filters[1].interfaceGuid, DeviceGuid());
    EXPECT_EQ(machine_.list.filters[1].classGuid, DeviceGuid());
}

TEST_F(AdapterListTest, CopiesPathsAndLuidsOfTheInterfaceOverTheRecordWithTheSameLocation) {
    auto withInterface = FakeDevice::displayController("A", "NVIDIA", "10DE", 1);
    withInterface.paths = {"path 1", "path 2", "path without luid"};
    machine_.list.devices = {FakeDevice::displayController("B", "AMD", "1002", 2), withInterface};
    machine_.luids = {{"path 1", 0x500000007ULL}, {"path 2", 9}};
    const auto records = list();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_TRUE(records[0].devicePaths.empty());
    EXPECT_EQ(records[1].devicePaths, withInterface.paths);
    EXPECT_EQ(records[1].adapterLuids, (std::vector<std::uint64_t>{0x500000007ULL, 9, 0}));
}

TEST_F(AdapterListTest, GivesTheFirstOfTwoRecordsWithOneLocationTheInterfaces) {
    auto first = FakeDevice::displayController("A", "NVIDIA", "10DE", 1);
    first.paths = {"path"};
    machine_.list.devices = {first, FakeDevice::displayController("B", "NVIDIA", "10DE", 1)};
    const auto records = list();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].devicePaths.size(), 1U);
    EXPECT_TRUE(records[1].devicePaths.empty());
}

TEST_F(AdapterListTest, KnowsNoLuidsWithoutTheLibraryThatTellsThem) {
    auto device = FakeDevice::displayController("A", "NVIDIA", "10DE", 1);
    device.paths = {"path"};
    machine_.list.devices = {device};
    machine_.luids = {{"path", 9}};
    const auto records = listAdapters(machine_, {&machine_.list, nullptr});
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].adapterLuids, std::vector<std::uint64_t>{0});
}

TEST_F(AdapterListTest, DropsInterfacesWithoutAPartnerWhenTheSecondPassFails) {
    auto device = FakeDevice::displayController("A", "NVIDIA", "10DE", 1);
    device.paths = {"path"};
    machine_.list.devices = {device};
    machine_.list.plainScanStatus = 5;
    EXPECT_TRUE(list().empty());
}

TEST_F(AdapterListTest, ListsCardsWithoutInterfacesWhenTheFirstPassFails) {
    auto device = FakeDevice::displayController("A", "NVIDIA", "10DE", 1);
    device.paths = {"path"};
    machine_.list.devices = {device};
    machine_.list.interfaceScanStatus = 5;
    const auto records = list();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_TRUE(records[0].devicePaths.empty());
}

TEST_F(AdapterListTest, SkipsDevicesOfOtherClassesAndThoseWithAPropertyMissing) {
    auto network = FakeDevice::displayController("network", "x", "8086", 3);
    network.properties[2] = std::string("PCI\\CC_0200\0", 12);
    auto noLocation = FakeDevice::displayController("no location", "x", "10DE", 4);
    noLocation.properties.erase(13);
    auto shortId = FakeDevice::displayController("short id", "x", "10DE", 5);
    shortId.properties[1] = "PCI\\VEN_10DE&DEV_1C03";
    auto noName = FakeDevice::displayController("", "", "10DE", 6);
    noName.properties.erase(0);
    noName.properties.erase(11);
    machine_.list.devices = {network, noLocation, shortId, noName};
    const auto records = list();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].location, "06:00.0");
    EXPECT_EQ(records[0].name, "");
    EXPECT_EQ(records[0].manufacturer, "");
}

TEST_F(AdapterListTest, FindsAnyDisplayDevice) {
    const SystemList list{&machine_.list, nullptr};
    EXPECT_FALSE(anyDisplayDevice(machine_, list));
    machine_.list.devices = {FakeDevice::displayController("A", "NVIDIA", "10DE", 1)};
    EXPECT_TRUE(anyDisplayDevice(machine_, list));
    machine_.list.devices[0].properties.erase(13);
    EXPECT_FALSE(anyDisplayDevice(machine_, list));
    machine_.list.devices = {FakeDevice::displayController("A", "NVIDIA", "10DE", 1)};
    machine_.list.devices[0].properties.erase(1);
    EXPECT_FALSE(anyDisplayDevice(machine_, list));
    machine_.list.devices = {FakeDevice::displayController("A", "NVIDIA", "10DE", 1)};
    machine_.list.plainScanStatus = 1;
    EXPECT_FALSE(anyDisplayDevice(machine_, list));
}

TEST_F(AdapterListTest, LooksForADisplayDeviceAmongAllDevices) {
    const SystemList list{&machine_.list, nullptr};
    auto network = FakeDevice::displayController("network", "x", "8086", 3);
    network.properties[2] = std::string("PCI\\CC_0200\0", 12);
    machine_.list.devices = {network};
    EXPECT_FALSE(anyDisplayDevice(machine_, list));
    machine_.list.devices = {network, FakeDevice::displayController("A", "NVIDIA", "10DE", 1)};
    EXPECT_TRUE(anyDisplayDevice(machine_, list));
    ASSERT_EQ(machine_.list.filters.size(), 2U);
    EXPECT_EQ(machine_.list.filters[1].interfaceGuid, DeviceGuid());
    EXPECT_EQ(machine_.list.filters[1].classGuid, DeviceGuid());
    EXPECT_TRUE(machine_.cimConditions.empty()) << "no driver is asked for";
}

TEST_F(AdapterListTest, AsksForTheVersionOfTheMakersDriverAndThenOfAnyDisplayDriver) {
    machine_.cim["DeviceClass = 'DISPLAY'"] = "30.0.13.1";
    EXPECT_EQ(driverVersionFor(machine_, "AMD"), "30.0.13.1");
    EXPECT_EQ(
        machine_.cimConditions,
        (std::vector<std::string>{"Win32_PnPSignedDriver.DriverVersion where DriverProviderName = 'AMD'",
                                  "Win32_PnPSignedDriver.DriverVersion where DeviceClass = 'DISPLAY'"}));
}

TEST_F(AdapterListTest, AsksAgainWhenTheMakersDriverHasAnEmptyVersion) {
    machine_.cim["DriverProviderName = 'AMD'"] = "";
    machine_.cim["DeviceClass = 'DISPLAY'"] = "1.2";
    EXPECT_EQ(driverVersionFor(machine_, "AMD"), "1.2");
}

TEST_F(AdapterListTest, KnowsNoDriverVersionWhenBothQueriesFail) {
    EXPECT_EQ(driverVersionFor(machine_, "AMD"), "");
    machine_.cim["DeviceClass = 'DISPLAY'"] = "";
    EXPECT_EQ(driverVersionFor(machine_, "AMD"), "");
}

TEST_F(AdapterListTest, GivesACardTheVersionOfAnyDisplayDriverEvenIfItIsTheOtherCards) {
    machine_.list.devices = {FakeDevice::displayController("A", "AMD", "1002", 1),
                             FakeDevice::displayController("B", "NVIDIA", "10DE", 2)};
    machine_.cim["DriverProviderName = 'NVIDIA'"] = "27.21";
    machine_.cim["DeviceClass = 'DISPLAY'"] = "27.21";
    const auto records = list();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].driverVersion, "27.21");
    EXPECT_EQ(records[1].driverVersion, "27.21");
}

TEST_F(AdapterListTest, DoesNotAskForAnyDriverWhenTheMakersIsKnown) {
    machine_.cim["DriverProviderName = 'NVIDIA'"] = "1.0";
    machine_.cim["DeviceClass = 'DISPLAY'"] = "2.0";
    EXPECT_EQ(driverVersionFor(machine_, "NVIDIA"), "1.0");
    EXPECT_EQ(machine_.cimConditions.size(), 1U);
}

} // namespace
} // namespace vexil::module::video_card
