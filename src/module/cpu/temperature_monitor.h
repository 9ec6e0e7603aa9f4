#pragma once

#include "module/cpu/abstract_cpu_temperature.h"

#include <cstdint>
#include <memory>
#include <string>

namespace vexil::module::cpu {

class CpuMachine;

/// The temperature of the machine's processor.
class TemperatureMonitor {
public:
    /// Throws `std::runtime_error` for a processor of an unknown maker, and what the maker's class throws.
    /// A driver service that is missing is no reason to throw: then each reading fails.
    TemperatureMonitor();
    /// `machine` must outlive the object.
    explicit TemperatureMonitor(CpuMachine& machine);

    /// Degrees Celsius; 0 on success.
    std::int32_t getPackageTemperature(double& celsius);

private:
    // The suite's own module fills these in; here they stay empty.
    std::string reservedTexts_[4];
    std::unique_ptr<AbstractCpuTemperature> temperature_;
};

} // namespace vexil::module::cpu
