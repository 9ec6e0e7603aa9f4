#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace vexil::module::cpu {

/// One logical processor, as the system numbers it.
struct LogicalProcessor {
    std::int32_t coreId = 0; ///< shared by the logical processors of one core
    std::uint16_t group = 0; ///< of up to 64 logical processors
    std::uint32_t number = 0;
};

using LogicalProcessors = std::vector<LogicalProcessor>;

/// The temperatures of a processor in degrees Celsius. The operations answer 0 for success.
class AbstractCpuTemperature {
public:
    virtual ~AbstractCpuTemperature() = default;
    virtual std::int32_t getPackageTemperature(double& celsius) = 0;
    /// By core id. Entries that are there already stay.
    virtual std::int32_t getCoreTemperatures(std::map<std::int32_t, double>& celsius) = 0;
};

} // namespace vexil::module::cpu
