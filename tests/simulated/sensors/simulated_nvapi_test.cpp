#include "platform/nvapi.h"
#include "simulated/nvapi/nvapi_machine.h"

#include <gtest/gtest.h>

// What the access layer asks NVAPI's stand-in itself, beside the GPUs' values.
namespace vexil::tests {
namespace {

namespace nvapi = platform::nvapi;

class SimulatedNvapi : public testing::Test {
protected:
    ~SimulatedNvapi() override { simulated::setNvapiMachine({}); }

    static nvapi::Status initialize() {
        return reinterpret_cast<nvapi::Initialize>(simulated::queryNvapi(nvapi::id::initialize))();
    }
    static nvapi::Status unload() {
        return reinterpret_cast<nvapi::Unload>(simulated::queryNvapi(nvapi::id::unload))();
    }

    simulated::NvapiMachine machine_{{}, {simulated::NvapiCardSection{}}};
};

TEST_F(SimulatedNvapi, StartsAndEndsOnAMachineWithAGpu) {
    simulated::setNvapiMachine(machine_);
    EXPECT_EQ(initialize(), 0);
    EXPECT_EQ(unload(), 0);
}

TEST_F(SimulatedNvapi, FindsNoDeviceOnAMachineWithoutAGpu) {
    simulated::setNvapiMachine({});
    EXPECT_EQ(initialize(), -6);
}

TEST_F(SimulatedNvapi, AnswersTheStatusesOfTheScenario) {
    machine_.library.statuses = {{"NvAPI_Initialize", -3}, {"NvAPI_Unload", 0x7FFFFFFF}};
    simulated::setNvapiMachine(machine_);
    EXPECT_EQ(initialize(), -3);
    EXPECT_EQ(unload(), 0x7FFFFFFF);
}

TEST_F(SimulatedNvapi, LacksEachOfTheTwoThatTheScenarioTakesAway) {
    machine_.library.missingFunctions = {"NvAPI_Initialize"};
    simulated::setNvapiMachine(machine_);
    EXPECT_EQ(simulated::queryNvapi(nvapi::id::initialize), nullptr);
    EXPECT_NE(simulated::queryNvapi(nvapi::id::unload), nullptr);
    machine_.library.missingFunctions = {"NvAPI_Unload"};
    simulated::setNvapiMachine(machine_);
    EXPECT_NE(simulated::queryNvapi(nvapi::id::initialize), nullptr);
    EXPECT_EQ(simulated::queryNvapi(nvapi::id::unload), nullptr);
}

} // namespace
} // namespace vexil::tests
