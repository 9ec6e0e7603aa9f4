#include "simulated/scenario/scenario_of_process.h"

#include <mutex>
#include <string>
#include <utility>

namespace vexil::simulated {

std::optional<Scenario> loadScenarioOfProcess() {
    const auto file = scenarioFileOfProcess();
    try {
        return file ? std::optional(loadScenario(*file)) : std::nullopt;
    } catch (const ScenarioError&) {
        return std::nullopt;
    }
}

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
        auto read = loadScenarioOfProcess();
        scenario = read ? std::make_shared<const Scenario>(std::move(*read)) : nullptr;
    }
    return scenario;
}

} // namespace vexil::simulated
