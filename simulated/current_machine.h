#pragma once

#include "core/never_destroyed.h"

#include <memory>
#include <mutex>
#include <utility>

namespace vexil::simulated {

/// The machine that the functions of a stand-in work on, an empty one at first. From any thread; who holds
/// the machine of before keeps it. Never destroyed: callers may outlive the statics of the library.
template <typename Machine>
class CurrentMachine {
public:
    [[nodiscard]] static std::shared_ptr<const Machine> get() {
        const std::lock_guard lock(place().mutex);
        return place().machine;
    }
    static void set(Machine machine) {
        auto shared = std::make_shared<const Machine>(std::move(machine));
        const std::lock_guard lock(place().mutex);
        place().machine = std::move(shared);
    }

private:
    struct Place {
        std::mutex mutex;
        std::shared_ptr<const Machine> machine = std::make_shared<const Machine>();
    };
    static Place& place() {
        static core::NeverDestroyed<Place> only;
        return only.get();
    }
};

} // namespace vexil::simulated
