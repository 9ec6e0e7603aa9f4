#pragma once

#include <cstddef>
#include <cstdint>

// NVAPI as far as the module calls it: one exported function, `nvapi_QueryInterface`, that hands out the
// others by number, and records that each begin with a word of their version and size. Layouts are NVIDIA's.
namespace vexil::platform::nvapi {

/// 0 is success; everything else is a failure.
using Status = std::int32_t;
inline constexpr Status ok = 0;
inline constexpr Status error = -1;
inline constexpr Status libraryNotFound = -2;
inline constexpr Status noImplementation = -3;
inline constexpr Status notInitialized = -4;
inline constexpr Status invalidArgument = -5;
inline constexpr Status deviceNotFound = -6;
inline constexpr Status incompatibleVersion = -9;
inline constexpr Status expectedGpuHandle = -101;
inline constexpr Status unloadRefused = -209;

/// Opaque, and never followed.
using GpuHandle = void*;
inline constexpr std::size_t maxGpus = 64;

namespace id {
inline constexpr std::uint32_t initialize = 0x0150E828;
inline constexpr std::uint32_t unload = 0xD22BDD7E;
inline constexpr std::uint32_t enumPhysicalGpus = 0xE5AC921F;
inline constexpr std::uint32_t getBusId = 0x1BE0B8E5;
inline constexpr std::uint32_t getBusSlotId = 0x2A0A350F;
inline constexpr std::uint32_t getThermalSettings = 0xE3640A56;
inline constexpr std::uint32_t getMemoryInfo = 0x07F9B368;
inline constexpr std::uint32_t getUsage = 0x189A1FDF; ///< has no published name
} // namespace id

struct ThermalSensor {
    std::int32_t controller;
    std::int32_t leastTemperature;
    std::int32_t greatestTemperature;
    std::int32_t currentTemperature; ///< degrees Celsius
    std::int32_t target;
};

struct ThermalSettings {
    std::uint32_t version;
    std::uint32_t count;
    ThermalSensor sensors[3];
};

/// As the sensor index: all sensors at once.
inline constexpr std::uint32_t allSensors = 15;

/// In KiB.
struct MemoryInfo {
    std::uint32_t version;
    std::uint32_t dedicatedVideoMemory;
    std::uint32_t availableDedicatedVideoMemory;
    std::uint32_t systemVideoMemory;
    std::uint32_t sharedSystemMemory;
    std::uint32_t curAvailableDedicatedVideoMemory;
    std::uint32_t evictionsSize;
    std::uint32_t evictionCount;
};

struct Usage {
    std::uint32_t version;
    std::uint32_t reserved[2];
    std::uint32_t graphicsPercent; ///< load of the graphics engine
    std::uint32_t others[30];
};

template <typename Record>
inline constexpr std::uint32_t versionOf = 0;
template <>
inline constexpr std::uint32_t versionOf<ThermalSettings> = 0x00020044;
template <>
inline constexpr std::uint32_t versionOf<MemoryInfo> = 0x00030020;
template <>
inline constexpr std::uint32_t versionOf<Usage> = 0x00010088;

static_assert(sizeof(ThermalSensor) == 20 && offsetof(ThermalSensor, currentTemperature) == 12);
static_assert(sizeof(ThermalSettings) == 68 && offsetof(ThermalSettings, count) == 4 &&
              offsetof(ThermalSettings, sensors) == 8);
static_assert(sizeof(MemoryInfo) == 32 && offsetof(MemoryInfo, availableDedicatedVideoMemory) == 8 &&
              offsetof(MemoryInfo, curAvailableDedicatedVideoMemory) == 20);
static_assert(sizeof(Usage) == 136 && offsetof(Usage, graphicsPercent) == 12);
static_assert((versionOf<ThermalSettings> & 0xFFFF) == sizeof(ThermalSettings) &&
              (versionOf<MemoryInfo> & 0xFFFF) == sizeof(MemoryInfo) &&
              (versionOf<Usage> & 0xFFFF) == sizeof(Usage));

using QueryInterface = void* (*)(std::uint32_t functionId);
using Initialize = Status (*)();
using Unload = Status (*)();
using EnumPhysicalGpus = Status (*)(GpuHandle* handles, std::uint32_t* count);
using GetBusNumber = Status (*)(GpuHandle gpu, std::uint32_t* number); ///< bus or slot
using GetThermalSettings = Status (*)(GpuHandle gpu, std::uint32_t sensor, ThermalSettings* settings);
using GetMemoryInfo = Status (*)(GpuHandle gpu, MemoryInfo* info);
using GetUsage = Status (*)(GpuHandle gpu, Usage* usage);

} // namespace vexil::platform::nvapi
