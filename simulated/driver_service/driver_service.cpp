#include "core/shared_api.h"
#include "simulated/driver_service/simulated_registers.h"
#include "simulated/scenario/scenario_of_process.h"

#include <exception>

extern "C" {

VEXIL_SHARED_API VXKService* CreateVXKService() {
    try {
        const auto scenario = vexil::simulated::scenarioOfProcess();
        return scenario && scenario->driverService.created
                   ? new vexil::simulated::SimulatedRegisters(scenario->driverService)
                   : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

VEXIL_SHARED_API void DestroyVXKService(VXKService* service) { delete service; }
}
