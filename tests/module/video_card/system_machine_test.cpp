#include "core/sal.h"
#include "module/video_card/machine.h"

#include <gtest/gtest.h>

#include <string>

// What the module asks of the machine that the tests run on, as far as every machine answers alike.
namespace vexil::module::video_card {
namespace {

TEST(SystemMachine, IsOneForTheProcess) { EXPECT_EQ(&systemMachine(), &systemMachine()); }

TEST(SystemMachine, BringsTheObjectsOfTheSuite) {
    EXPECT_EQ(&systemMachine().strings(), get_string_handler());
    EXPECT_EQ(&systemMachine().numbers(), get_number_handler());
    auto* list = systemMachine().acquireDeviceList();
    EXPECT_EQ(get_device_scanner(), list);
    release_device_scanner();
    systemMachine().releaseDeviceList();
}

TEST(SystemMachine, AsksCimForOnePropertyOfOneClass) {
    std::string value;
    EXPECT_TRUE(systemMachine().queryCim("Caption", "DeviceID = 'CPU0'", "Win32_Processor", value));
    EXPECT_NE(value, "");
}

TEST(SystemMachine, TellsOfAQueryThatFails) {
    std::string value = "old";
    EXPECT_FALSE(systemMachine().queryCim("Caption", "DeviceID = 'none'", "Win32_NoSuchClass", value));
    EXPECT_EQ(value, "old");
}

TEST(SystemMachine, TellsOfAPropertyThatDoesNotExist) {
    std::string value = "old";
    EXPECT_FALSE(systemMachine().queryCim("NoSuchProperty", "DeviceID = 'CPU0'", "Win32_Processor", value));
    EXPECT_EQ(value, "old");
}

TEST(SystemMachine, KnowsNoLuidWithoutTheLibraryOrForAnUnknownPath) {
    EXPECT_EQ(systemMachine().adapterLuid(nullptr, "no such path"), 0U);
    void* library = systemMachine().loadKernelGraphics();
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(systemMachine().adapterLuid(library, "no such path"), 0U);
    systemMachine().unloadKernelGraphics(library);
    EXPECT_EQ(systemMachine().adapterLuid(nullptr, "no such path"), 0U);
}

TEST(SystemMachine, HasAScanForEachKindOfStatistics) {
    const auto scans = systemMachine().statisticsScans({});
    EXPECT_TRUE(scans.adl);
    EXPECT_TRUE(scans.intel);
    EXPECT_TRUE(scans.d3dkmt);
    EXPECT_TRUE(scans.nvapi);
}

} // namespace
} // namespace vexil::module::video_card
