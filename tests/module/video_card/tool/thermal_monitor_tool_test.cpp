#include "module/video_card/tool/thermal_monitor_tool.h"

#include "core/test_reporter.h"
#include "core/test_result.h"
#include "module/video_card/device.h"
#include "text_handlers.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace vexil::tests {
namespace {

using namespace module::video_card;
using core::TestResult;
using tool::ThermalMonitorToolVideocard;

class Reporter final : public core::TestReporter {
public:
    std::vector<core::TestMessage> messages;
    int progressCalls = 0;
    int questions = 0;

    void setProgress(std::uint8_t) override { ++progressCalls; }
    void report(const core::TestMessage& message) override { messages.push_back(message); }
    void interact(std::unique_ptr<core::InputInteraction>&) override { ++questions; }
};

class Thermometer final : public VideoCardStatistics {
public:
    using Answer = std::function<VideoCardStatisticsStatus(std::int64_t&)>;
    explicit Thermometer(Answer answer) : answer_(std::move(answer)) {}

    [[nodiscard]] bool matches(const AdapterRecord&) const override { return true; }
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override { return answer_(celsius); }
    VideoCardStatisticsStatus getUsage(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }

private:
    Answer answer_;
};

class OtherDevice final : public core::Device {
public:
    [[nodiscard]] std::string id() const override { return {}; }
    [[nodiscard]] std::string displayName() const override { return {}; }
    [[nodiscard]] bool hasUdi() const override { return false; }
    [[nodiscard]] std::string udi() const override { return {}; }
    [[nodiscard]] std::vector<core::KeyValue> properties() const override { return {}; }
    [[nodiscard]] std::vector<std::string> notices() const override { return {}; }
    [[nodiscard]] bool isPresent() const override { return true; }
    void refresh() override {}
};

class ThermalTool : public testing::Test {
protected:
    ThermalTool() {
        AdapterRecord record;
        record.name = name_;
        record.location = "01:00.0";
        make(record);
        arguments_.cancelRequested = &cancel_;
        arguments_.reporter = &reporter_;
        arguments_.systemEvents = std::make_shared<core::SystemEventState>();
    }

    void make(const AdapterRecord& record) {
        card_ = std::make_shared<Device>(record, DeviceServices{strings_, numbers_, 0});
        arguments_.device = card_;
    }

    void show(Thermometer::Answer answer) {
        card_->setStatistics(std::make_unique<Thermometer>(std::move(answer)));
    }
    void show(std::int64_t celsius) {
        show([celsius](std::int64_t& value) {
            value = celsius;
            return VideoCardStatisticsStatus::Ok;
        });
    }

    const std::string name_ = "GeForce RTX 3060";
    sal::TextHandler strings_;
    sal::NumberText numbers_;
    std::shared_ptr<Device> card_;
    volatile std::uint8_t cancel_ = 0;
    Reporter reporter_;
    core::TestRunArguments arguments_;
    ThermalMonitorToolVideocard tool_;
};

TEST_F(ThermalTool, IsTheToolNinety) {
    const auto& descriptor = tool_.descriptor();
    EXPECT_EQ(descriptor.id, 90);
    EXPECT_EQ(descriptor.name, "TEMPERATURE_TOOL_VIDEO_CARD");
    EXPECT_EQ(descriptor.tooltip, "TEMPERATURE_TOOL_VIDEO_CARD_DESCRIPTION");
    EXPECT_EQ(descriptor.group, "Tool");
    EXPECT_EQ(descriptor.groupRank, 0);
    EXPECT_TRUE(descriptor.parameters.empty());
    EXPECT_TRUE(tool_.parameters().empty());
    EXPECT_FALSE(tool_.requiresExclusiveRun());
    EXPECT_EQ(tool_.expectedDurationMinutes(), 1U);
}

TEST_F(ThermalTool, IsOfferedForVideoCardsAndReleasesTheHolder) {
    OtherDevice other;
    EXPECT_TRUE(tool_.isSupported(card_.get(), card_));
    EXPECT_EQ(card_.use_count(), 1);
    EXPECT_FALSE(tool_.isSupported(&other, nullptr));
    EXPECT_FALSE(tool_.isSupported(nullptr, nullptr));
}

TEST_F(ThermalTool, SendsOneLineByteForByteAndNoProgress) {
    show(45);
    EXPECT_EQ(tool_.execute(arguments_), TestResult::Passed);
    ASSERT_EQ(reporter_.messages.size(), 1U);
    EXPECT_EQ(reporter_.messages[0].kind, 0);
    EXPECT_EQ(reporter_.messages[0].key,
              "{\"deviceId\": \"0100\", \"deviceName\": \"GeForce RTX 3060\", \"temperatureCelsius\": 45, "
              "\"temperatureFahrenheit\": 113}");
    EXPECT_EQ(reporter_.progressCalls, 0);
    EXPECT_EQ(reporter_.questions, 0);
}

TEST_F(ThermalTool, SendsHyphensAndIsUnavailableWithoutATemperature) {
    show([](std::int64_t& value) {
        value = -999999;
        return VideoCardStatisticsStatus::Unavailable;
    });
    EXPECT_EQ(tool_.execute(arguments_), TestResult::DeviceUnavailable);
    ASSERT_EQ(reporter_.messages.size(), 1U);
    EXPECT_EQ(reporter_.messages[0].key,
              "{\"deviceId\": \"0100\", \"deviceName\": \"GeForce RTX 3060\", \"temperatureCelsius\": "
              "\"--\", \"temperatureFahrenheit\": \"--\"}");
}

TEST_F(ThermalTool, AsksWithTheTemperatureSetToZero) {
    std::int64_t asked = -1;
    show([&](std::int64_t& value) {
        asked = value;
        return VideoCardStatisticsStatus::Ok;
    });
    EXPECT_EQ(tool_.execute(arguments_), TestResult::Passed);
    EXPECT_EQ(asked, 0);
}

TEST_F(ThermalTool, SaysNothingOfADeviceThatIsGone) {
    show(45);
    card_.reset();
    EXPECT_EQ(tool_.execute(arguments_), TestResult::DeviceUnavailable);
    EXPECT_TRUE(reporter_.messages.empty());
}

TEST_F(ThermalTool, LooksForTheDeviceBeforeItLooksForAStop) {
    card_.reset();
    cancel_ = 1;
    arguments_.systemEvents->flags = 1;
    EXPECT_EQ(tool_.execute(arguments_), TestResult::DeviceUnavailable);
}

TEST_F(ThermalTool, SaysNothingOfADeviceOfAnotherKind) {
    const auto other = std::make_shared<OtherDevice>();
    arguments_.device = other;
    EXPECT_EQ(tool_.execute(arguments_), TestResult::DeviceUnavailable);
    EXPECT_TRUE(reporter_.messages.empty());
}

TEST_F(ThermalTool, StopsSilentlyForTheUser) {
    show(45);
    cancel_ = 0x80;
    EXPECT_EQ(tool_.execute(arguments_), TestResult::NotCompleted);
    EXPECT_TRUE(reporter_.messages.empty());
}

TEST_F(ThermalTool, StopsSilentlyForAnyEventBit) {
    show(45);
    for (unsigned bit = 0; bit < 32; ++bit) {
        arguments_.systemEvents->flags = 1U << bit;
        EXPECT_EQ(tool_.execute(arguments_), TestResult::NotCompleted) << bit;
    }
    EXPECT_TRUE(reporter_.messages.empty());
}

TEST_F(ThermalTool, RunsWithoutAnEventState) {
    show(45);
    arguments_.systemEvents.reset();
    EXPECT_EQ(tool_.execute(arguments_), TestResult::Passed);
}

TEST_F(ThermalTool, IsNotStoppedOnceItHasBegunToAsk) {
    show([this](std::int64_t& value) {
        cancel_ = 1;
        arguments_.systemEvents->flags = 1;
        value = 45;
        return VideoCardStatisticsStatus::Ok;
    });
    EXPECT_EQ(tool_.execute(arguments_), TestResult::Passed);
    EXPECT_EQ(reporter_.messages.size(), 1U);
}

TEST(ToFahrenheit, TruncatesTowardZeroBeforeItAddsThirtyTwo) {
    EXPECT_EQ(tool::toFahrenheit(45), 113);
    EXPECT_EQ(tool::toFahrenheit(0), 32);
    EXPECT_EQ(tool::toFahrenheit(-1), 31);
    EXPECT_EQ(tool::toFahrenheit(-40), -40);
    EXPECT_EQ(tool::toFahrenheit(100), 212);
    EXPECT_EQ(tool::toFahrenheit(37), 98);
}

TEST(ToFahrenheit, TakesTheNonsenseOfASensor) {
    EXPECT_EQ(tool::toFahrenheit(std::numeric_limits<std::int64_t>::min()),
              std::numeric_limits<std::int64_t>::min() / 5 + 32)
        << "the product wraps around to the same number";
}

TEST(ThermalLine, WritesANegativeTemperatureWithItsSign) {
    EXPECT_EQ(tool::thermalLine("I", "N", -40),
              "{\"deviceId\": \"I\", \"deviceName\": \"N\", "
              "\"temperatureCelsius\": -40, \"temperatureFahrenheit\": -40}");
}

TEST(ThermalLine, CopiesAQuotationMarkAndIsNoJsonThen) {
    EXPECT_EQ(tool::thermalLine("0100", "19\" card", 0),
              "{\"deviceId\": \"0100\", \"deviceName\": \"19\" card\", \"temperatureCelsius\": 0, "
              "\"temperatureFahrenheit\": 32}");
}

} // namespace
} // namespace vexil::tests
