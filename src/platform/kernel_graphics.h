#pragma once

#include <cstdint>

// The kernel-mode graphics interface, as far as the module calls it: records as Windows lays them out.
namespace vexil::platform::d3dkmt {

struct Luid {
    std::uint32_t lowPart;
    std::int32_t highPart;
};

struct OpenAdapterFromDeviceName {
    const wchar_t* deviceName; ///< in
    std::uint32_t adapter;     ///< out: a handle that `D3DKMTCloseAdapter` gives back
    Luid adapterLuid;          ///< out
};

struct CloseAdapter {
    std::uint32_t adapter;
};

/// An NTSTATUS: negative values are failures.
using Status = std::int32_t;
inline constexpr Status success = 0;
inline constexpr Status invalidParameter = static_cast<Status>(0xC000000D);

using OpenAdapterFromDeviceNameFunction = Status (*)(OpenAdapterFromDeviceName*);
using CloseAdapterFunction = Status (*)(const CloseAdapter*);

} // namespace vexil::platform::d3dkmt
