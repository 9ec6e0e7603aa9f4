#include "platform/nvapi.h"
#include "core/shared_api.h"
#include "simulated/nvapi/nvapi_machine.h"
#include "simulated/scenario/scenario_of_process.h"

#include <cstdint>

// NVIDIA's driver library of a simulated machine.
namespace {

using namespace vexil::simulated;

/// A scenario that cannot be read is a machine without a GPU: the host has checked it, and a library has
/// nobody to tell.
NvapiMachine machineOfProcess() {
    const auto scenario = loadScenarioOfProcess();
    return scenario ? nvapiMachineOf(*scenario) : NvapiMachine{};
}

} // namespace

extern "C" {

// A caller starts by asking for the function that initialises: that is when the machine is looked at.
VEXIL_SHARED_API void* nvapi_QueryInterface(std::uint32_t functionId) {
    if (functionId == vexil::platform::nvapi::id::initialize) {
        setNvapiMachine(machineOfProcess());
    }
    return queryNvapi(functionId);
}
}
