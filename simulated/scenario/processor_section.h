#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vexil::simulated {

class FieldReader;

/// The processor of a simulated machine. One that a scenario says nothing about is of a kind that the module
/// knows, so that a simulated machine works on every real one.
struct ProcessorSection {
    std::string vendor = "GenuineIntel"; ///< the 12 characters of CPUID
    std::uint32_t family = 6;
    std::uint32_t model = 165;
    std::uint32_t stepping = 5;
    std::string caption;            ///< in the system's list; empty: what vendor and numbers give
    std::int32_t captionStatus = 0; ///< of the query for it
    bool listed = true;             ///< whether the list has a processor at all
};

/// Reads the field "processor" of a scenario.
[[nodiscard]] ProcessorSection readProcessorSection(FieldReader& scenario);

/// A register whose value or status differs from what the temperature alone would give.
struct ScenarioMsr {
    std::uint32_t reg = 0;
    std::uint64_t value = 0;
    std::int32_t status = 0;
};

struct ScenarioPciRegister {
    std::uint64_t bus = 0;
    std::uint32_t device = 0;
    std::uint32_t function = 0;
    std::uint32_t offset = 0;
    std::uint32_t value = 0;
    std::int32_t status = 0; ///< of reading and of writing
};

/// The driver service of a simulated machine.
struct DriverServiceSection {
    bool created = true;         ///< whether its library hands out a service
    std::string missingFunction; ///< that the library lacks; empty: none
    bool ready = true;
    double temperatureCelsius = 45;
    std::uint32_t maximumCelsius = 100;
    std::vector<ScenarioMsr> msrs;
    std::vector<ScenarioPciRegister> pciRegisters;
};

/// Reads the field "driverService" of a scenario.
[[nodiscard]] DriverServiceSection readDriverServiceSection(FieldReader& scenario);

} // namespace vexil::simulated
