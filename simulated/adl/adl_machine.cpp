#include "simulated/adl/adl_machine.h"

#include "core/never_destroyed.h"
#include "simulated/scenario/scenario.h"

#include <mutex>
#include <utility>

namespace vexil::simulated {

namespace {

struct Place {
    std::mutex mutex;
    std::shared_ptr<const AdlMachine> machine = std::make_shared<const AdlMachine>();
};

Place& place() {
    // Never destroyed: the module ends its use of ADL when the statics of this library are gone.
    static core::NeverDestroyed<Place> only;
    return only.get();
}

} // namespace

AdlMachine adlMachineOf(const Scenario& scenario) {
    AdlMachine machine{scenario.adl, {}};
    for (const auto& card : scenario.cards) {
        if (card.adl) {
            machine.cards.push_back(*card.adl);
        }
    }
    return machine;
}

void setAdlMachine(AdlMachine newMachine) {
    auto shared = std::make_shared<const AdlMachine>(std::move(newMachine));
    const std::lock_guard lock(place().mutex);
    place().machine = std::move(shared);
}

std::shared_ptr<const AdlMachine> adlMachine() {
    const std::lock_guard lock(place().mutex);
    return place().machine;
}

} // namespace vexil::simulated
