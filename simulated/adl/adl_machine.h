#pragma once

#include "simulated/scenario/adl_section.h"

#include <memory>
#include <vector>

namespace vexil::simulated {

struct Scenario;

/// The cards that the stand-in of ADL tells of, and how it behaves.
struct AdlMachine {
    AdlSection library;
    std::vector<AdlCardSection> cards;
};

[[nodiscard]] AdlMachine adlMachineOf(const Scenario& scenario);

/// Puts a machine in place for the library's functions. From any thread.
void setAdlMachine(AdlMachine machine);

[[nodiscard]] std::shared_ptr<const AdlMachine> adlMachine();

} // namespace vexil::simulated
