#include "simulated/adl/adl_machine.h"

#include "simulated/current_machine.h"
#include "simulated/scenario/scenario.h"

#include <utility>

namespace vexil::simulated {

AdlMachine adlMachineOf(const Scenario& scenario) {
    AdlMachine machine{scenario.adl, {}};
    for (const auto& card : scenario.cards) {
        if (card.adl) {
            machine.cards.push_back(*card.adl);
        }
    }
    return machine;
}

void setAdlMachine(AdlMachine machine) { CurrentMachine<AdlMachine>::set(std::move(machine)); }

std::shared_ptr<const AdlMachine> adlMachine() { return CurrentMachine<AdlMachine>::get(); }

} // namespace vexil::simulated
