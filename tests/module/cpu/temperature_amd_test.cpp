#include "module/cpu/temperature_amd.h"

#include "support/fake_cpu_machine.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexil::tests {
namespace {

using namespace module::cpu;

class TemperatureAmdTest : public testing::Test {
protected:
    TemperatureAmd make(const std::string& caption) {
        machine_.caption = caption;
        return {std::make_shared<VXKServiceInterface>(machine_), std::make_shared<const LogicalProcessors>(),
                machine_};
    }

    FakeCpuMachine machine_;
};

TEST_F(TemperatureAmdTest, ReadsInTheWayOfItsFamily) {
    machine_.service.pciRegisters = {{100, 256U << 21}, {164, 512U << 21}};
    double celsius = 0;
    EXPECT_EQ(make("AMD64 Family 25 Model 33 Stepping 0").getPackageTemperature(celsius), 0);
    EXPECT_EQ(celsius, 32.0);
    EXPECT_EQ(make("AMD64 Family 22 Model 1 Stepping 0").getPackageTemperature(celsius), 0);
    EXPECT_EQ(celsius, 64.0);
}

TEST_F(TemperatureAmdTest, PutsThePackageUnderCoreZero) {
    machine_.service.pciRegisters = {{100, 256U << 21}};
    std::map<std::int32_t, double> cores;
    EXPECT_EQ(make("AMD64 Family 25 Model 33 Stepping 0").getCoreTemperatures(cores), 0);
    EXPECT_EQ(cores, (std::map<std::int32_t, double>{{0, 32.0}}));
}

TEST_F(TemperatureAmdTest, MakesTheEntryOfCoreZeroEvenIfTheReadingFails) {
    std::map<std::int32_t, double> cores;
    EXPECT_EQ(make("AMD64 Family 25 Model 33 Stepping 0").getCoreTemperatures(cores), 1);
    EXPECT_EQ(cores, (std::map<std::int32_t, double>{{0, 0.0}}));
}

TEST_F(TemperatureAmdTest, IsNotMadeForAnUnknownFamily) {
    EXPECT_THROW(make("AMD64 Family 26 Model 2 Stepping 1"), std::runtime_error);
}

TEST_F(TemperatureAmdTest, IsNotMadeForACaptionThatEndsWithFamily) {
    EXPECT_THROW(make("AMD64 Model 2 Family"), std::out_of_range);
}

TEST_F(TemperatureAmdTest, GivesTheServiceBackWhenItIsNotMade) {
    EXPECT_THROW(make("AMD64 Family 26 Model 2 Stepping 1"), std::runtime_error);
    EXPECT_EQ(machine_.calls.back(), "release");
}

} // namespace
} // namespace vexil::tests
