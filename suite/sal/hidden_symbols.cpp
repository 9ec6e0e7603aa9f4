#include "hidden_symbols.h"

#include "simulated/scenario/scenario.h"

#include <algorithm>

namespace vexil::sal {

namespace {

/// A scenario that cannot be read hides nothing; the host has told what is wrong with it.
std::vector<std::string> readNames(const std::string& file) {
    try {
        return simulated::loadScenario(file).adl.missingFunctions;
    } catch (const simulated::ScenarioError&) {
        return {};
    }
}

} // namespace

bool HiddenSymbols::hides(std::string_view symbol) {
    const auto file = simulated::scenarioFileOfProcess();
    if (!file) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    if (*file != scenario_) {
        names_ = readNames(*file);
        scenario_ = *file;
    }
    return std::ranges::find(names_, symbol) != names_.end();
}

} // namespace vexil::sal
