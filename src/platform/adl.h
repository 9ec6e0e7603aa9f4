#pragma once

#include <cstddef>
#include <cstdint>

// ADL as far as the module calls it: functions that the library exports by name. Layouts are AMD's.
namespace vexil::platform::adl {

/// 0 is success; everything else counts as a failure here.
using Status = std::int32_t;
inline constexpr Status ok = 0;
inline constexpr Status error = -1;
inline constexpr Status notInitialized = -2;
inline constexpr Status invalidParameter = -3;
inline constexpr Status invalidParameterSize = -4;
inline constexpr Status invalidAdapterIndex = -5;
inline constexpr Status notSupported = -8;
inline constexpr Status nullPointer = -9;

/// Null stands for the context that `ADL_Main_Control_Create` makes.
using ContextHandle = void*;

struct AdapterInfo {
    std::int32_t iSize;
    std::int32_t iAdapterIndex;
    char strUDID[256];
    std::int32_t iBusNumber;
    std::int32_t iDeviceNumber;
    std::int32_t iFunctionNumber;
    std::int32_t iVendorID;
    char strAdapterName[256];
    char strDisplayName[256];
    std::int32_t iPresent;
    std::int32_t iExist;
    char strDriverPath[256];
    char strDriverPathExt[256];
    char strPNPString[256];
    std::int32_t iOSDisplayIndex;
};

struct ThermalControllerInfo {
    std::int32_t iSize;
    std::int32_t iThermalDomain;
    std::int32_t iDomainIndex;
    std::int32_t iFlags;
};

/// The thermal domain that is the GPU itself.
inline constexpr std::int32_t gpuDomain = 1;

struct Temperature {
    std::int32_t iSize;
    std::int32_t iTemperature; ///< millidegrees Celsius
};

struct MemoryInfo {
    std::int64_t iMemorySize; ///< bytes
    char strMemoryType[256];
    std::int64_t iMemoryBandwidth;
};

static_assert(sizeof(AdapterInfo) == 1572 && offsetof(AdapterInfo, iAdapterIndex) == 4 &&
              offsetof(AdapterInfo, iBusNumber) == 264 && offsetof(AdapterInfo, iDeviceNumber) == 268 &&
              offsetof(AdapterInfo, iFunctionNumber) == 272);
static_assert(sizeof(ThermalControllerInfo) == 16 && offsetof(ThermalControllerInfo, iThermalDomain) == 4);
static_assert(sizeof(Temperature) == 8 && offsetof(Temperature, iTemperature) == 4);
static_assert(sizeof(MemoryInfo) == 272 && offsetof(MemoryInfo, iMemorySize) == 0);

/// As the kind of an OverdriveN temperature: that of the core.
inline constexpr std::int32_t coreTemperature = 1;

/// Called by the library for memory that its caller is to own.
using Allocate = void* (*)(std::int32_t count);

using MainControlCreate = Status (*)(Allocate allocate, std::int32_t connectedOnly);
using MainControlDestroy = Status (*)();
using NumberOfAdaptersGet = Status (*)(std::int32_t* count);
using AdapterInfoGet = Status (*)(AdapterInfo* adapters, std::int32_t bytes);
using ActiveGet = Status (*)(std::int32_t adapter, std::int32_t* active);
using OverdriveCaps = Status (*)(ContextHandle context, std::int32_t adapter, std::int32_t* supported,
                                 std::int32_t* enabled, std::int32_t* version);
using Overdrive5ThermalDevicesEnum = Status (*)(std::int32_t adapter, std::int32_t controller,
                                                ThermalControllerInfo* info);
using Overdrive5TemperatureGet = Status (*)(std::int32_t adapter, std::int32_t controller,
                                            Temperature* temperature);
using Overdrive6TemperatureGet = Status (*)(std::int32_t adapter, std::int32_t* millidegrees);
using OverdriveNTemperatureGet = Status (*)(ContextHandle context, std::int32_t adapter, std::int32_t kind,
                                            std::int32_t* millidegrees);
using MemoryInfoGet = Status (*)(std::int32_t adapter, MemoryInfo* info);
using VramUsageGet = Status (*)(ContextHandle context, std::int32_t adapter, std::int32_t* megabytes);
/// What an Overdrive generation must have beside its temperature; the module never calls these.
using Uncalled = Status (*)();

} // namespace vexil::platform::adl
