#pragma once

#include "module/video_card/adapter_record.h"

#include <string>
#include <vector>

class SystemDeviceList;

namespace vexil::module::video_card {

class Machine;

/// What a scan holds of the machine for as long as the scanner lives.
struct SystemList {
    SystemDeviceList* devices = nullptr;
    void* kernelGraphics = nullptr; ///< null where the library is missing; LUIDs are 0 then
};

/// One record for each display controller of the machine; those with a device interface have LUIDs and paths.
[[nodiscard]] std::vector<AdapterRecord> listAdapters(Machine& machine, const SystemList& list);

/// Whether the machine has any display controller with a location and ids.
[[nodiscard]] bool anyDisplayDevice(Machine& machine, const SystemList& list);

/// The version of the signed driver of that provider or, failing that, of any display driver: on a machine
/// with two it can be the other card's. Empty if none is known.
[[nodiscard]] std::string driverVersionFor(Machine& machine, const std::string& manufacturer);

} // namespace vexil::module::video_card
