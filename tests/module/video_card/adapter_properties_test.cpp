#include "module/video_card/adapter_properties.h"
#include "support/fake_machine.h"
#include "support/grouping_locale.h"

#include <gtest/gtest.h>

namespace vexil::module::video_card {
namespace {

using namespace std::string_literals;

class AdapterPropertiesTest : public testing::Test {
protected:
    AdapterProperties propertiesOf(std::uint32_t id, const std::string& text) {
        list_.devices = {{{{id, text}}, {}}};
        SystemDeviceList::InterfacePaths paths;
        list_.scan(WinDeviceScanFilter(), paths);
        return {list_, numbers_};
    }
    std::optional<std::uint32_t> classCode(const std::string& ids) {
        return propertiesOf(2, ids + "\0\0"s).classCode(0);
    }
    std::optional<std::string> location(const std::string& text) {
        return propertiesOf(13, text).location(0);
    }
    std::optional<HardwareIds> ids(const std::string& text) { return propertiesOf(1, text).hardwareIds(0); }

    tests::FakeDeviceList list_;
    sal::NumberText numbers_;
};

TEST_F(AdapterPropertiesTest, ClassCodeIsTheTwoDigitsBehindTheFirstMark) {
    EXPECT_EQ(classCode("PCI\\CC_030000"), 3U);
    EXPECT_EQ(classCode("PCI\\CC_0380"), 3U);
    EXPECT_EQ(classCode("PCI\\CC_0C0330"), 12U);
    EXPECT_EQ(classCode("PCI\\CC_0200\0PCI\\CC_0300"s), 2U);
}

TEST_F(AdapterPropertiesTest, ClassCodeIsFoundInALaterTextOfTheSequence) {
    EXPECT_EQ(classCode("PCI\\VEN_10DE&DEV_1C03\0PCI\\VEN_10DE\0PCI\\CC_030000"s), 3U);
}

TEST_F(AdapterPropertiesTest, ClassCodeIsNothingWithoutAMarkOrWithoutDigitsBehindIt) {
    EXPECT_EQ(classCode("PCI\\VEN_10DE"), std::nullopt);
    EXPECT_EQ(classCode("PCI\\CC_XY"), std::nullopt);
    EXPECT_EQ(classCode("PCI\\CC_0"), std::nullopt);
    EXPECT_EQ(classCode(""), std::nullopt);
    EXPECT_EQ(propertiesOf(13, "no compatible ids at all").classCode(0), std::nullopt);
}

TEST_F(AdapterPropertiesTest, DisplayControllersAreOfClassThree) {
    EXPECT_TRUE(propertiesOf(2, "PCI\\CC_0302\0\0"s).isDisplayController(0));
    EXPECT_FALSE(propertiesOf(2, "PCI\\CC_3000\0\0"s).isDisplayController(0));
    EXPECT_FALSE(propertiesOf(2, "PCI\\CC_1300\0\0"s).isDisplayController(0));
    EXPECT_FALSE(propertiesOf(13, "no compatible ids at all").isDisplayController(0));
}

TEST_F(AdapterPropertiesTest, LocationIsTheFirstThreeNumbersInHexadecimal) {
    EXPECT_EQ(location("PCI bus 10, device 0, function 0"), "0a:00.0");
    EXPECT_EQ(location("PCI-Bus 1, Gerät 31, Funktion 7"), "01:1f.7");
    EXPECT_EQ(location("1 2 3 4"), "01:02.3");
    EXPECT_EQ(location("bus255dev31fn15"), "ff:1f.f");
}

TEST_F(AdapterPropertiesTest, LocationIsTheSameInEveryLocale) {
    const tests::GroupingLocale locale;
    EXPECT_EQ(location("PCI bus 4096, device 31, function 0"), "1000:1f.0");
}

TEST_F(AdapterPropertiesTest, LocationIsNothingWhenANumberIsMissing) {
    EXPECT_EQ(location("PCI bus 10, device 0"), std::nullopt);
    EXPECT_EQ(location(""), std::nullopt);
    EXPECT_EQ(location("99999999999 0 0"), std::nullopt);
    EXPECT_EQ(propertiesOf(2, "no location at all\0"s).location(0), std::nullopt);
}

TEST_F(AdapterPropertiesTest, HardwareIdsAreFourDigitsEachAtTheirPlaces) {
    const auto found = ids("PCI\\VEN_10DE&DEV_1C03&SUBSYS_37221458");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->vendorId, "10DE");
    EXPECT_EQ(found->deviceId, "1C03");
}

TEST_F(AdapterPropertiesTest, HardwareIdsNeedTwentyTwoCharacters) {
    const std::string text = "PCI\\VEN_10DE&DEV_1C03&";
    ASSERT_EQ(text.size(), 22U);
    EXPECT_TRUE(ids(text));
    EXPECT_FALSE(ids(text.substr(0, 21)));
}

TEST_F(AdapterPropertiesTest, NamesAreEmptyWhenTheyCannotBeRead) {
    EXPECT_EQ(propertiesOf(13, "x").description(0), "");
    EXPECT_EQ(propertiesOf(13, "x").manufacturer(0), "");
    EXPECT_EQ(propertiesOf(0, "GeForce").description(0), "GeForce");
    EXPECT_EQ(propertiesOf(11, "NVIDIA").manufacturer(0), "NVIDIA");
}

} // namespace
} // namespace vexil::module::video_card
