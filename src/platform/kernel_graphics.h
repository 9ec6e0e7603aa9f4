#pragma once

#include <cstddef>
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

/// What a statistics query asks for; the interface knows more types.
enum class QueryStatisticsType : std::uint32_t { Adapter = 0, Node = 5 };

/// The answer to `QueryStatisticsType::Adapter`, as far as it is read.
struct AdapterInformation {
    std::uint32_t segmentCount;
    std::uint32_t nodeCount; ///< engines; their ids count from 0
    std::uint32_t sourceCount;
};

/// The answer to `QueryStatisticsType::Node`, as far as it is read: what all processes together did on the
/// engine.
struct NodeInformation {
    std::int64_t runningTime; ///< in units of 100 nanoseconds
    std::uint32_t contextSwitches;
};

/// Request and result in one record.
struct QueryStatistics {
    QueryStatisticsType type; ///< in
    Luid adapterLuid;         ///< in
    void* process;            ///< in; null for the whole system
    union {
        AdapterInformation adapterInformation;
        NodeInformation nodeInformation;
        std::byte largest[776]; ///< of the results that are not read here
    } queryResult;              ///< out
    union {
        std::uint32_t nodeId;
        std::byte largest[8];
    } query; ///< in
};
static_assert(offsetof(QueryStatistics, adapterLuid) == 4);
static_assert(offsetof(QueryStatistics, process) == 16);
static_assert(offsetof(QueryStatistics, queryResult) == 24);
static_assert(offsetof(QueryStatistics, query) == 800);
static_assert(sizeof(QueryStatistics) == 808);
static_assert(offsetof(AdapterInformation, nodeCount) == 4);
static_assert(offsetof(NodeInformation, runningTime) == 0);
static_assert(offsetof(OpenAdapterFromDeviceName, adapter) == 8);
static_assert(offsetof(OpenAdapterFromDeviceName, adapterLuid) == 12);
static_assert(sizeof(OpenAdapterFromDeviceName) == 24);

/// An NTSTATUS: negative values are failures.
using Status = std::int32_t;
inline constexpr Status success = 0;
inline constexpr Status invalidParameter = static_cast<Status>(0xC000000D);

using OpenAdapterFromDeviceNameFunction = Status (*)(OpenAdapterFromDeviceName*);
using CloseAdapterFunction = Status (*)(const CloseAdapter*);
using QueryStatisticsFunction = Status (*)(QueryStatistics*);

} // namespace vexil::platform::d3dkmt
