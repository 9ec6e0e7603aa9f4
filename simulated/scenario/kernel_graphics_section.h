#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexil::simulated {

class FieldReader;

/// One engine of a simulated card.
struct ScenarioEngine {
    double loadPercent = 0;
    std::int32_t status = 0;     ///< of each query for it from `failsFrom` on; an NTSTATUS
    std::uint64_t failsFrom = 1; ///< counted from 1
    /// In units of 100 nanoseconds, answered in turn instead of what the load gives; the last one stays.
    std::vector<std::uint64_t> runningTimes;
};

/// What the kernel-mode graphics statistics tell of a card.
struct KernelGraphicsSection {
    std::int32_t openStatus = 0;
    std::int32_t statisticsStatus = 0;        ///< of the question how many engines there are
    std::optional<std::uint32_t> engineCount; ///< claimed instead of the true number
    std::vector<ScenarioEngine> engines;
};

/// The library of these statistics itself.
struct KernelGraphicsLibrarySection {
    std::string missingFunction; ///< that it lacks; empty: none
};

/// Reads the field "kernelGraphics" of a scenario.
[[nodiscard]] KernelGraphicsLibrarySection readKernelGraphicsLibrary(FieldReader& scenario);

/// Reads the field "kernelGraphics" of a card; without it the card has one idle engine.
[[nodiscard]] KernelGraphicsSection readKernelGraphicsSection(FieldReader& card);

} // namespace vexil::simulated
