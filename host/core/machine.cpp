#include "host/core/machine.h"

#include "host/core/exit_code.h"
#include "host/core/simulated_machine.h"

#include <string_view>

namespace vexil::host {

Machine chooseMachine(const std::string& choice, bool needsCard, bool hasDisplayController) {
    constexpr std::string_view simulatedPrefix = "simulated:";
    if (choice.empty()) {
        const bool fallBack = needsCard && !hasDisplayController;
        return fallBack ? Machine{true, builtInScenario, true} : Machine{};
    }
    if (choice == "real") {
        return {};
    }
    if (choice == "simulated") {
        return {true, builtInScenario, false};
    }
    if (choice.starts_with(simulatedPrefix) && choice.size() > simulatedPrefix.size()) {
        return {true, choice.substr(simulatedPrefix.size()), false};
    }
    throw UsageError("unknown machine '" + choice + "': there is real, simulated and simulated:SCENARIO");
}

} // namespace vexil::host
