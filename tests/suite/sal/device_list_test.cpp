#include "device_list.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexil::sal {
namespace {

using namespace std::string_literals;

class Source final : public DeviceSource {
public:
    std::vector<SystemDevice> devices;
    bool fails = false;

    std::vector<SystemDevice> list(const WinDeviceScanFilter&) override {
        if (fails) {
            throw std::runtime_error("no answer");
        }
        return devices;
    }
};

class DeviceListTest : public testing::Test {
protected:
    DeviceListTest() {
        source_->devices = {{"name", {"id 1", "id 2"}, {"c"}, "maker", "where", {"path"}}, {}};
    }
    std::int32_t scan() { return list_.scan(WinDeviceScanFilter(), paths_); }
    std::string text(std::uint32_t index, std::uint32_t id, std::size_t length) {
        const char* found = nullptr;
        return list_.property(index, id, found) == 0 ? std::string(found, length) : "none";
    }

    Source* source_ = new Source;
    DeviceList list_{std::unique_ptr<DeviceSource>(source_)};
    SystemDeviceList::InterfacePaths paths_;
};

TEST_F(DeviceListTest, AnswersPropertiesByTheirIds) {
    EXPECT_EQ(scan(), 0);
    EXPECT_EQ(list_.count(), 2U);
    EXPECT_EQ(text(0, 0, 5), "name\0"s);
    EXPECT_EQ(text(0, 11, 6), "maker\0"s);
    EXPECT_EQ(text(0, 13, 6), "where\0"s);
    EXPECT_EQ(paths_[0], std::vector<std::string>{"path"});
    EXPECT_TRUE(paths_[1].empty());
}

TEST_F(DeviceListTest, EndsSequencesWithTwoNulCharacters) {
    scan();
    EXPECT_EQ(text(0, 1, 11), "id 1\0id 2\0\0"s);
    EXPECT_EQ(text(0, 2, 3), "c\0\0"s);
    EXPECT_EQ(text(1, 1, 2), "\0\0"s) << "an empty sequence too";
}

TEST_F(DeviceListTest, FailsForAPropertyOrADeviceThatIsNotThere) {
    scan();
    EXPECT_EQ(text(1, 0, 1), "none");
    EXPECT_EQ(text(0, 99, 1), "none");
    EXPECT_EQ(text(2, 1, 1), "none");
}

TEST_F(DeviceListTest, FailsWhenTheSystemDoesNotAnswer) {
    source_->fails = true;
    EXPECT_NE(scan(), 0);
}

} // namespace
} // namespace vexil::sal
