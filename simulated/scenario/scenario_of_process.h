#pragma once

#include "simulated/scenario/scenario.h"

#include <memory>
#include <optional>

namespace vexil::simulated {

/// The scenario that this process runs in as its file stands now. Nothing without a scenario, and for one
/// that cannot be read.
[[nodiscard]] std::optional<Scenario> loadScenarioOfProcess();

/// The scenario that this process runs in, read once for each file that VEXIL_SCENARIO names: for libraries
/// whose calls must be quick. Null without a scenario, and for one that cannot be read.
[[nodiscard]] std::shared_ptr<const Scenario> scenarioOfProcess();

} // namespace vexil::simulated
