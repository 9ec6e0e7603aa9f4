#pragma once

#include "platform/adl.h"

#include <cstdint>
#include <string_view>

/// The functions of the stand-in of ADL, over the machine that is in place.
namespace vexil::simulated::adl_functions {

namespace adl = platform::adl;

adl::Status mainControlCreate(adl::Allocate allocate, std::int32_t connectedOnly);
adl::Status mainControlDestroy();
adl::Status numberOfAdaptersGet(std::int32_t* count);
adl::Status adapterInfoGet(adl::AdapterInfo* adapters, std::int32_t bytes);
adl::Status activeGet(std::int32_t index, std::int32_t* active);
adl::Status overdriveCaps(adl::ContextHandle context, std::int32_t index, std::int32_t* supported,
                          std::int32_t* enabled, std::int32_t* version);
adl::Status overdrive5ThermalDevicesEnum(std::int32_t index, std::int32_t number,
                                         adl::ThermalControllerInfo* info);
adl::Status overdrive5TemperatureGet(std::int32_t index, std::int32_t number, adl::Temperature* temperature);
adl::Status overdrive6TemperatureGet(std::int32_t index, std::int32_t* millidegrees);
adl::Status overdriveNTemperatureGet(adl::ContextHandle context, std::int32_t index, std::int32_t kind,
                                     std::int32_t* millidegrees);
adl::Status memoryInfoGet(std::int32_t index, adl::MemoryInfo* info);
adl::Status vramUsageGet(adl::ContextHandle context, std::int32_t index, std::int32_t* megabytes);
/// What the module asks for and never calls.
adl::Status uncalled();

/// A function by the name under which the library exports it; null for one that is unknown or that the
/// machine's library is to lack.
[[nodiscard]] void* find(std::string_view name);

} // namespace vexil::simulated::adl_functions
