#pragma once

#include "module/cpu/vxk_service_interface.h"

#include <cstdint>

namespace vexil::module::cpu {

// What the temperature registers of AMD's processor families mean, in degrees Celsius. The reading stands in
// the upper eleven bits, in steps of an eighth; a range bit moves its zero to -49.
[[nodiscard]] double northBridgeTemperature(std::uint32_t value);
[[nodiscard]] double family15EarlyTemperature(std::uint32_t value);
[[nodiscard]] double zenTemperature(std::uint32_t value);

// How each family's register is reached. 0 on success; a failed access leaves `celsius` alone.
std::int32_t readNorthBridge(VXKServiceInterface& service, double& celsius);
std::int32_t readFamily15Early(VXKServiceInterface& service, double& celsius);
std::int32_t readFamily15Late(VXKServiceInterface& service, double& celsius);
std::int32_t readZen(VXKServiceInterface& service, double& celsius);

} // namespace vexil::module::cpu
