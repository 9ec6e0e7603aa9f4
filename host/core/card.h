#pragma once

#include "core/device.h"
#include "core/device_record.h"

#include <memory>
#include <vector>

namespace vexil::core {
class Module;
}

namespace vexil::host {

/// One card of the machine: what the scan told of it, and the object that tests run on.
struct Card {
    core::DeviceRecord record;
    std::weak_ptr<core::Device> device;
};

/// Scans the machine, and gives the cards in the order in which the module told of them. Two functions of one
/// device are two cards with the same id. None on a machine without a display controller. A scan that the
/// module ends with an exception throws `InternalError`.
[[nodiscard]] std::vector<Card> scanCards(core::Module& module);

} // namespace vexil::host
