#include "simulated/scenario/scenario_of_process.h"

#include <mutex>
#include <string>

namespace vexil::simulated {

std::shared_ptr<const Scenario> scenarioOfProcess() {
    static std::mutex mutex;
    static std::string readFile;
    static std::shared_ptr<const Scenario> scenario;

    const auto file = scenarioFileOfProcess();
    if (!file) {
        return nullptr;
    }
    const std::lock_guard lock(mutex);
    if (*file != readFile) {
        readFile = *file;
        try {
            scenario = std::make_shared<const Scenario>(loadScenario(*file));
        } catch (const ScenarioError&) {
            scenario = nullptr;
        }
    }
    return scenario;
}

} // namespace vexil::simulated
