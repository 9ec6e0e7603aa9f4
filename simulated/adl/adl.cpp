#include "core/shared_api.h"
#include "simulated/adl/adl_functions.h"
#include "simulated/adl/adl_machine.h"
#include "simulated/scenario/scenario_of_process.h"

#include <cstdint>

// AMD's display library of a simulated machine. The suite's loader hides the functions that the scenario's
// library lacks; a library cannot drop its own exports.
namespace {

using namespace vexil::simulated;
namespace adl = vexil::platform::adl;

/// A scenario that cannot be read is a machine without a card: the host has checked it, and a library has
/// nobody to tell.
AdlMachine machineOfProcess() {
    const auto scenario = loadScenarioOfProcess();
    return scenario ? adlMachineOf(*scenario) : AdlMachine{};
}

} // namespace

extern "C" {

VEXIL_SHARED_API adl::Status ADL_Main_Control_Create(adl::Allocate allocate, std::int32_t connectedOnly) {
    setAdlMachine(machineOfProcess());
    return adl_functions::mainControlCreate(allocate, connectedOnly);
}

VEXIL_SHARED_API adl::Status ADL_Main_Control_Destroy() { return adl_functions::mainControlDestroy(); }

VEXIL_SHARED_API adl::Status ADL_Adapter_NumberOfAdapters_Get(std::int32_t* count) {
    return adl_functions::numberOfAdaptersGet(count);
}

VEXIL_SHARED_API adl::Status ADL_Adapter_AdapterInfo_Get(adl::AdapterInfo* adapters, std::int32_t bytes) {
    return adl_functions::adapterInfoGet(adapters, bytes);
}

VEXIL_SHARED_API adl::Status ADL_Adapter_Active_Get(std::int32_t index, std::int32_t* active) {
    return adl_functions::activeGet(index, active);
}

VEXIL_SHARED_API adl::Status ADL2_Overdrive_Caps(adl::ContextHandle context, std::int32_t index,
                                                 std::int32_t* supported, std::int32_t* enabled,
                                                 std::int32_t* version) {
    return adl_functions::overdriveCaps(context, index, supported, enabled, version);
}

VEXIL_SHARED_API adl::Status ADL_Overdrive5_ThermalDevices_Enum(std::int32_t index, std::int32_t controller,
                                                                adl::ThermalControllerInfo* info) {
    return adl_functions::overdrive5ThermalDevicesEnum(index, controller, info);
}

VEXIL_SHARED_API adl::Status ADL_Overdrive5_Temperature_Get(std::int32_t index, std::int32_t controller,
                                                            adl::Temperature* temperature) {
    return adl_functions::overdrive5TemperatureGet(index, controller, temperature);
}

VEXIL_SHARED_API adl::Status ADL_Overdrive6_Temperature_Get(std::int32_t index, std::int32_t* millidegrees) {
    return adl_functions::overdrive6TemperatureGet(index, millidegrees);
}

VEXIL_SHARED_API adl::Status ADL2_OverdriveN_Temperature_Get(adl::ContextHandle context, std::int32_t index,
                                                             std::int32_t kind, std::int32_t* millidegrees) {
    return adl_functions::overdriveNTemperatureGet(context, index, kind, millidegrees);
}

VEXIL_SHARED_API adl::Status ADL_Adapter_MemoryInfo_Get(std::int32_t index, adl::MemoryInfo* info) {
    return adl_functions::memoryInfoGet(index, info);
}

VEXIL_SHARED_API adl::Status ADL2_Adapter_VRAMUsage_Get(adl::ContextHandle context, std::int32_t index,
                                                        std::int32_t* megabytes) {
    return adl_functions::vramUsageGet(context, index, megabytes);
}

// Part of their generations' tables; the load of an AMD card is asked elsewhere.
VEXIL_SHARED_API adl::Status ADL_Overdrive5_CurrentActivity_Get() { return adl_functions::uncalled(); }
VEXIL_SHARED_API adl::Status ADL_Overdrive6_CurrentStatus_Get() { return adl_functions::uncalled(); }
VEXIL_SHARED_API adl::Status ADL2_OverdriveN_PerformanceStatus_Get() { return adl_functions::uncalled(); }
}
