#include "module/cpu/temperature_intel.h"

#include "support/fake_cpu_machine.h"
#include "support/recorded_thread.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using namespace module::cpu;

constexpr std::uint32_t statusRegister = 0x19C;
constexpr std::uint32_t targetRegister = 0x1A2;
constexpr std::uint64_t valid = 1ULL << 31;

class TemperatureIntelTest : public testing::Test {
protected:
    void show(std::uint64_t maximum, std::uint64_t distance) {
        machine_.service.msrs[statusRegister] = valid | distance << 16;
        machine_.service.msrs[targetRegister] = maximum << 16;
    }

    TemperatureIntel monitor(LogicalProcessors processors = {}) {
        return {std::make_shared<VXKServiceInterface>(machine_),
                std::make_shared<const LogicalProcessors>(std::move(processors))};
    }

    FakeCpuMachine machine_;
    double celsius_ = -1;
};

TEST_F(TemperatureIntelTest, GivesTheTargetLessTheDistance) {
    show(100, 45);
    EXPECT_EQ(monitor().getPackageTemperature(celsius_), 0);
    EXPECT_EQ(celsius_, 55.0);
}

TEST_F(TemperatureIntelTest, ReadsNothingButTheBitsOfTargetAndDistance) {
    machine_.service.msrs[statusRegister] = 0xFFFFFFFF'FF80FFFF | 45ULL << 16;
    machine_.service.msrs[targetRegister] = 0xFFFFFFFF'FF00FFFF | 100ULL << 16;
    EXPECT_EQ(monitor().getPackageTemperature(celsius_), 0);
    EXPECT_EQ(celsius_, 55.0);
}

TEST_F(TemperatureIntelTest, ReadsAllBitsOfTargetAndDistance) {
    show(255, 127);
    EXPECT_EQ(monitor().getPackageTemperature(celsius_), 0);
    EXPECT_EQ(celsius_, 128.0);
}

TEST_F(TemperatureIntelTest, GivesAVeryLargeValueForADistanceBeyondTheTarget) {
    show(20, 21);
    EXPECT_EQ(monitor().getPackageTemperature(celsius_), 0);
    EXPECT_EQ(celsius_, 18446744073709551616.0) << "the difference of -1 taken as unsigned";
}

TEST_F(TemperatureIntelTest, FailsForAReadingThatIsNotValid) {
    show(100, 45);
    machine_.service.msrs[statusRegister] &= ~valid;
    EXPECT_EQ(monitor().getPackageTemperature(celsius_), 1);
    EXPECT_EQ(celsius_, -1);
}

TEST_F(TemperatureIntelTest, FailsWithoutEitherRegister) {
    for (const auto missing : {statusRegister, targetRegister}) {
        show(100, 45);
        machine_.service.msrs.erase(missing);
        EXPECT_EQ(monitor().getPackageTemperature(celsius_), 1) << std::hex << missing;
    }
}

TEST_F(TemperatureIntelTest, FailsWhileTheDriverIsNotReady) {
    show(100, 45);
    machine_.service.ready = 0;
    EXPECT_EQ(monitor().getPackageTemperature(celsius_), 1);
}

TEST_F(TemperatureIntelTest, KeepsTheFirstReadingOfEachCore) {
    show(100, 45);
    int readings = 0;
    machine_.service.onReadMsr = [&] { show(100, 45 + static_cast<std::uint64_t>(readings++) / 2); };
    std::map<std::int32_t, double> cores;
    auto temperature = monitor({{4, 0, 0}, {4, 0, 0}, {9, 0, 0}});
    EXPECT_EQ(temperature.getCoreTemperatures(cores), 0);
    EXPECT_EQ(cores, (std::map<std::int32_t, double>{{4, 55.0}, {9, 53.0}}));
}

TEST_F(TemperatureIntelTest, ReadsEachCoreOnAThreadOfItsOwnProcessor) {
    show(100, 45);
    ThreadRecord record;
    TemperatureIntel temperature(
        std::make_shared<VXKServiceInterface>(machine_),
        std::make_shared<const LogicalProcessors>(LogicalProcessors{{4, 1, 70}, {9, 0, 3}}),
        recordedThreads(record));
    std::map<std::int32_t, double> cores;
    EXPECT_EQ(temperature.getCoreTemperatures(cores), 0);
    EXPECT_EQ(cores, (std::map<std::int32_t, double>{{4, 55.0}, {9, 55.0}}));
    EXPECT_EQ(record.steps,
              (ThreadRecord::Steps{"priority -15", "group 1 64", "mask 64", "resume", "wait", "exit",
                                   "priority -15", "group 0 8", "mask 8", "resume", "wait", "exit"}))
        << "processor 70 is bit 6 of its group";
}

TEST_F(TemperatureIntelTest, LeavesOutCoresThatCannotBeRead) {
    std::map<std::int32_t, double> cores;
    auto temperature = monitor({{4, 0, 0}});
    EXPECT_EQ(temperature.getCoreTemperatures(cores), 0) << "the service is ready, and that counts";
    EXPECT_TRUE(cores.empty());
}

TEST_F(TemperatureIntelTest, HasNoCoresWhileTheDriverIsNotReady) {
    show(100, 45);
    machine_.service.ready = 0;
    std::map<std::int32_t, double> cores;
    auto temperature = monitor({{4, 0, 0}});
    EXPECT_EQ(temperature.getCoreTemperatures(cores), 1);
    EXPECT_TRUE(cores.empty());
}

TEST_F(TemperatureIntelTest, HasNoCoresToReadInThisModule) {
    show(100, 45);
    std::map<std::int32_t, double> cores;
    EXPECT_EQ(monitor().getCoreTemperatures(cores), 0);
    EXPECT_TRUE(cores.empty());
}

} // namespace
} // namespace vexil::tests
