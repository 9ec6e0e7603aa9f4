#include "platform/linux/cim/machine_objects.h"
#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vexil::platform::CimObject;
using vexil::platform::processorObjects;
using vexil::system::CimValue;
using vexil::tests::RecordedTree;

RecordedTree machine(const char* name) { return RecordedTree(std::string(VEXIL_TEST_DATA) + "/" + name); }

CimValue value(const CimObject& object, std::string_view name) {
    for (const auto& [property, propertyValue] : object) {
        if (property == name) {
            return propertyValue;
        }
    }
    ADD_FAILURE() << "no property " << name;
    return {};
}

std::string text(const CimObject& object, std::string_view name) {
    const auto found = value(object, name);
    return std::holds_alternative<std::string>(found) ? std::get<std::string>(found) : "(no text)";
}

TEST(ProcessorObjects, CaptionAnIntelProcessorAsWindowsDoes) {
    const auto tree = machine("intel_nvidia_desktop.tree");
    const auto objects = processorObjects(tree.root());
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(text(objects[0], "Caption"), "Intel64 Family 6 Model 167 Stepping 1");
    EXPECT_EQ(text(objects[0], "Manufacturer"), "GenuineIntel");
    EXPECT_EQ(text(objects[0], "Name"), "11th Gen Intel(R) Core(TM) i7-11700 @ 2.50GHz");
    EXPECT_EQ(text(objects[0], "DeviceID"), "CPU0");
    EXPECT_EQ(value(objects[0], "NumberOfCores"), CimValue(8));
    EXPECT_EQ(value(objects[0], "NumberOfLogicalProcessors"), CimValue(4))
        << "the tree lists four of sixteen";
}

TEST(ProcessorObjects, CaptionAnAmdProcessorAsWindowsDoes) {
    const auto tree = machine("amd_workstation.tree");
    const auto objects = processorObjects(tree.root());
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(text(objects[0], "Caption"), "AMD64 Family 23 Model 113 Stepping 0");
    EXPECT_EQ(text(objects[0], "Manufacturer"), "AuthenticAMD");
}

TEST(ProcessorObjects, ReadARecordedMachine) {
    const auto tree = machine("virtual_machine.tree");
    const auto objects = processorObjects(tree.root());
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(text(objects[0], "Caption"), "AMD64 Family 26 Model 2 Stepping 1");
    EXPECT_EQ(text(objects[0], "Name"), "AMD EPYC");
    EXPECT_EQ(value(objects[0], "NumberOfLogicalProcessors"), CimValue(2));
}

TEST(ProcessorObjects, AreOneForEachPackage) {
    const auto tree = machine("dual_socket_server.tree");
    const auto objects = processorObjects(tree.root());
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(text(objects[0], "Caption"), "Intel64 Family 6 Model 143 Stepping 8");
    EXPECT_EQ(text(objects[1], "DeviceID"), "CPU1");
    EXPECT_EQ(text(objects[1], "Caption"), "Intel64 Family 6 Model 143 Stepping 0")
        << "a stepping that the kernel cannot ask for is 0";
    EXPECT_EQ(text(objects[1], "Stepping"), "unknown");
}

TEST(ProcessorObjects, LeaveEmptyWhatTheKernelDoesNotTell) {
    RecordedTree tree;
    tree.addFile("proc/cpuinfo",
                 "processor\t: 0\nvendor_id\t: GenuineIntel\ncpu family\t: 6\nmodel name\t:\n\n"
                 "Hardware\t: a board\n");
    const auto objects = processorObjects(tree.root());
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(value(objects[0], "Caption"), CimValue()) << "there is no model number";
    EXPECT_EQ(value(objects[0], "Name"), CimValue());
    EXPECT_EQ(value(objects[0], "NumberOfCores"), CimValue());
}

TEST(ProcessorObjects, AreNoneWithoutCpuInfo) {
    RecordedTree tree;
    EXPECT_TRUE(processorObjects(tree.root()).empty());
    tree.addFolder("proc/cpuinfo");
    EXPECT_TRUE(processorObjects(tree.root()).empty()) << "a folder opens, but cannot be read";
    tree.remove("proc/cpuinfo");
    tree.addFile("proc/cpuinfo", "");
    EXPECT_TRUE(processorObjects(tree.root()).empty());
}

} // namespace
