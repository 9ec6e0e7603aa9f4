#include "platform/linux/cim/machine_objects.h"
#include "platform/linux/pci_ids.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vexil::platform::CimObject;
using vexil::platform::displayDriverObjects;
using vexil::platform::findPciIdDatabase;
using vexil::platform::lookUpPciNames;
using vexil::platform::videoControllerObjects;
using vexil::tests::RecordedTree;

RecordedTree machine(const char* name) { return RecordedTree(std::string(VEXIL_TEST_DATA) + "/" + name); }

/// The texts of one property, an empty value shown as "-".
std::vector<std::string> column(const std::vector<CimObject>& objects, std::string_view name) {
    std::vector<std::string> texts;
    for (const auto& object : objects) {
        for (const auto& [property, value] : object) {
            if (property == name) {
                const auto* text = std::get_if<std::string>(&value);
                texts.push_back(text != nullptr ? *text : "-");
            }
        }
    }
    return texts;
}

using Texts = std::vector<std::string>;

TEST(DisplayDrivers, TellTheModulesVersionOrElseTheKernels) {
    const auto tree = machine("intel_nvidia_desktop.tree");
    const auto drivers = displayDriverObjects(tree.root());
    EXPECT_EQ(column(drivers, "DriverName"), (Texts{"i915", "nvidia"}));
    EXPECT_EQ(column(drivers, "DriverVersion"), (Texts{"6.1.0-28-amd64", "535.183.01"}));
    EXPECT_EQ(column(drivers, "DriverProviderName"), (Texts{"Intel Corporation", "NVIDIA Corporation"}));
    EXPECT_EQ(column(drivers, "DeviceClass"), (Texts{"DISPLAY", "DISPLAY"}));
    EXPECT_EQ(column(drivers, "DeviceName"),
              (Texts{"RocketLake-S GT1 [UHD Graphics 750]", "GP106 [GeForce GTX 1060 6GB]"}));
    EXPECT_EQ(column(drivers, "Location"),
              (Texts{"PCI bus 0, device 2, function 0", "PCI bus 1, device 0, function 0"}));
    EXPECT_EQ(column(drivers, "DeviceID"), (Texts{"PCI\\VEN_8086&DEV_4C8A&SUBSYS_86941043&REV_04",
                                                  "PCI\\VEN_10DE&DEV_1C03&SUBSYS_11D710DE&REV_A1"}));
}

TEST(DisplayDrivers, LeaveOutACardWithoutADriver) {
    const auto tree = machine("amd_workstation.tree");
    const auto drivers = displayDriverObjects(tree.root());
    EXPECT_EQ(column(drivers, "DriverName"), Texts{"amdgpu"});
    EXPECT_EQ(column(drivers, "DriverVersion"), Texts{"6.8.0-45-generic"});
    EXPECT_EQ(column(drivers, "DriverProviderName"), Texts{"Advanced Micro Devices, Inc. [AMD/ATI]"})
        << "the maker is known without a database";
    EXPECT_EQ(column(drivers, "DeviceName"), Texts{"-"});
    EXPECT_EQ(column(drivers, "Location"), Texts{"PCI bus 10, device 0, function 0"});
}

TEST(DisplayDrivers, CountADisplayControllerOfEverySubclass) {
    const auto tree = machine("dual_socket_server.tree");
    EXPECT_EQ(column(displayDriverObjects(tree.root()), "DriverVersion"), Texts{"550.90.07"});
}

TEST(DisplayDrivers, AreNoneOnAMachineWithoutADisplayController) {
    const auto tree = machine("virtual_machine.tree");
    EXPECT_TRUE(displayDriverObjects(tree.root()).empty());
    EXPECT_TRUE(videoControllerObjects(tree.root()).empty());
    EXPECT_TRUE(displayDriverObjects(RecordedTree().root()).empty()) << "nor without sysfs";
}

TEST(DisplayDrivers, LeaveTheVersionEmptyWhereNothingTellsIt) {
    auto tree = machine("intel_nvidia_desktop.tree");
    tree.remove("proc/sys/kernel/osrelease");
    EXPECT_EQ(column(displayDriverObjects(tree.root()), "DriverVersion"), (Texts{"-", "535.183.01"}));
}

TEST(DisplayDrivers, LeaveOutADeviceWhoseFilesMakeNoSense) {
    RecordedTree tree;
    const std::string device = "sys/bus/pci/devices/0000:01:00.0/";
    tree.addFile(device + "class", "0x030000\n");
    tree.addFile(device + "vendor", "nonsense\n");
    tree.addFile(device + "device", "0x1c03\n");
    EXPECT_TRUE(videoControllerObjects(tree.root()).empty());
    tree.addFile(device + "vendor", "0x10de\n");
    EXPECT_EQ(videoControllerObjects(tree.root()).size(), 1U);
    tree.addFile(device + "class", "0x0x30000\n");
    EXPECT_TRUE(videoControllerObjects(tree.root()).empty());
}

TEST(VideoControllers, AreListedWithADriverOrWithout) {
    const auto tree = machine("amd_workstation.tree");
    const auto controllers = videoControllerObjects(tree.root());
    EXPECT_EQ(column(controllers, "DeviceID"), (Texts{"VideoController1", "VideoController2"}));
    EXPECT_EQ(column(controllers, "AdapterCompatibility"),
              (Texts{"Advanced Micro Devices, Inc. [AMD/ATI]", "NVIDIA Corporation"}));
    EXPECT_EQ(column(controllers, "DriverVersion"), (Texts{"6.8.0-45-generic", "-"}));
}

vexil::platform::PciNames pciNames(const RecordedTree& tree, std::uint32_t vendor, std::uint32_t device) {
    return lookUpPciNames(findPciIdDatabase(tree.root()), vendor, device);
}

TEST(PciNames, AreLookedUpUnderTheirVendor) {
    const auto tree = machine("intel_nvidia_desktop.tree");
    EXPECT_EQ(pciNames(tree, 0x10DE, 0x1C03).device, "GP106 [GeForce GTX 1060 6GB]");
    EXPECT_EQ(pciNames(tree, 0x1AF4, 0x1041).vendor, "Red Hat, Inc.");
    EXPECT_EQ(pciNames(tree, 0x1AF4, 0x1C03).device, "") << "another vendor has that number";
    EXPECT_EQ(pciNames(tree, 0x10DE, 0xFFFF).vendor, "NVIDIA Corporation");
    EXPECT_EQ(pciNames(tree, 0xFFFF, 0x1C03).vendor, "");
}

TEST(PciNames, AreFoundInEveryPlaceOfTheDatabase) {
    for (const char* place : {"usr/share/misc/pci.ids", "usr/share/hwdata/pci.ids", "usr/share/pci.ids"}) {
        RecordedTree tree;
        tree.addFile(place, "1234  Somebody\n\t1111  Something\n");
        EXPECT_EQ(pciNames(tree, 0x1234, 0x1111).vendor, "Somebody") << place;
        EXPECT_EQ(pciNames(tree, 0x1234, 0x1111).device, "Something") << place;
    }
}

TEST(PciNames, AreNotThoseOfASubsystem) {
    RecordedTree tree;
    tree.addFile("usr/share/misc/pci.ids",
                 "10de  NVIDIA Corporation\n\t1c03  GP106\n\t\t1458 3722  WINDFORCE\n");
    EXPECT_EQ(pciNames(tree, 0x10DE, 0x1458).device, "");
}

TEST(PciNames, AreThoseOfTheKnownMakersWithoutADatabase) {
    const RecordedTree tree;
    EXPECT_TRUE(findPciIdDatabase(tree.root()).empty());
    EXPECT_EQ(pciNames(tree, 0x8086, 0x3E92).vendor, "Intel Corporation");
    EXPECT_EQ(pciNames(tree, 0x8086, 0x3E92).device, "");
    EXPECT_EQ(pciNames(tree, 0x1234, 0x1111).vendor, "");
}

} // namespace
