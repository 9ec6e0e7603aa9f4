#pragma once

#include "simulated/scenario/scenario.h"

#include <memory>

namespace vexil::simulated {

/// The scenario that this process runs in, read once for each file that VEXIL_SCENARIO names: for libraries
/// whose calls must be quick. Null without a scenario, and for one that cannot be read.
[[nodiscard]] std::shared_ptr<const Scenario> scenarioOfProcess();

} // namespace vexil::simulated
