#pragma once

#include "simulated/scenario/field_reader.h"
#include "simulated/scenario/processor_section.h"
#include "simulated/scenario/required_outcome.h"
#include "simulated/scenario/scenario_card.h"

#include <optional>
#include <string>
#include <vector>

namespace vexil::simulated {

/// A machine described in a file: its cards, and what is broken about them.
struct Scenario {
    std::string description;
    std::int32_t cudaDriverVersion = 12040; ///< 1000 * major + 10 * minor
    std::vector<ScenarioCard> cards;
    AdlSection adl;
    NvapiSection nvapi;
    KernelGraphicsLibrarySection kernelGraphics;
    ProcessorSection processor;
    DriverServiceSection driverService;
    std::vector<RequiredOutcome> required; ///< what `vxe-host selfcheck` compares with
};

/// The functions whose libraries cannot hide that they have them: the machine needs a library without.
[[nodiscard]] std::vector<std::string> missingExports(const Scenario& scenario);

/// Reads and checks a scenario file, every section of it. Throws `ScenarioError`.
[[nodiscard]] Scenario loadScenario(const std::string& file);

/// The file that the environment variable VEXIL_SCENARIO names: how the stand-in libraries of one process
/// learn of their machine. UTF-8; nothing where the variable is absent or empty.
[[nodiscard]] std::optional<std::string> scenarioFileOfProcess();

} // namespace vexil::simulated
