#include "device_source.h"
#include "simulated/scenario/scenario.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace vexil::sal {
namespace {

class ScenarioDevicesTest : public testing::Test {
protected:
    ScenarioDevicesTest() {
        std::ofstream(file_) << R"({"schema": "vexil.scenario/1", "cards": [
            {"name": "A", "manufacturer": "M", "vendorId": "10DE", "deviceId": "2503", "location": "0a:1f.3"},
            {"vendorId": "1002", "deviceId": "73DF", "location": "02:00.0", "hasInterface": false}]})";
        source_ = makeScenarioDeviceSource(file_.string());
    }
    ~ScenarioDevicesTest() override { std::filesystem::remove(file_); }

    std::filesystem::path file_ = tests::testFolder() / "scenario_devices.json";
    std::unique_ptr<DeviceSource> source_;
};

TEST_F(ScenarioDevicesTest, ListEveryCardInTheSystemsForm) {
    const auto devices = source_->list({});
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_EQ(devices[0].description, "A");
    EXPECT_EQ(devices[0].manufacturer, "M");
    EXPECT_EQ(devices[0].locationInformation, "PCI bus 10, device 31, function 3");
    EXPECT_TRUE(devices[0].hardwareIds[0].starts_with("PCI\\VEN_10DE&DEV_2503&"));
    EXPECT_GE(devices[0].hardwareIds[0].size(), 22U);
    EXPECT_EQ(devices[0].compatibleIds[1], "PCI\\CC_030000");
    EXPECT_TRUE(devices[0].interfacePaths.empty());
}

TEST_F(ScenarioDevicesTest, ListOnlyCardsWithAnInterfaceWhenAskedForOne) {
    const auto devices = source_->list({{1, 0, 0, {}}, {}});
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_EQ(devices[0].description, "A");
    ASSERT_EQ(devices[0].interfacePaths.size(), 1U);
    EXPECT_NE(devices[0].interfacePaths[0].find("0a:1f.3"), std::string::npos);
}

} // namespace
} // namespace vexil::sal
