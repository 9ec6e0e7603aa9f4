#pragma once

#include "simulated/scenario/function_names.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexil::simulated {

/// One GPU as NVAPI tells of it. What is absent is left unwritten by a call, whatever its status.
struct NvapiCardSection {
    std::optional<std::uint32_t> bus;
    std::optional<std::uint32_t> slot;
    std::vector<std::int32_t> celsius;        ///< of at most three sensors
    std::optional<std::uint32_t> sensorCount; ///< as told; by default the number of sensors
    std::optional<std::uint32_t> usagePercent;
    std::optional<std::uint32_t> totalKib;
    std::optional<std::uint32_t> freeKib;
    FunctionStatuses statuses;
};

/// NVAPI itself.
struct NvapiSection {
    std::optional<std::uint32_t> gpuCount; ///< as told; by default the number of GPUs
    FunctionStatuses statuses;
    std::vector<std::string> missingFunctions;
};

/// Reads the section "nvapi" of a card; nothing if it has none. `location` gives bus and slot by default.
[[nodiscard]] std::optional<NvapiCardSection> readNvapiCard(FieldReader& card, const std::string& location);

/// Reads the section "nvapi" of a scenario.
[[nodiscard]] NvapiSection readNvapi(FieldReader& scenario);

} // namespace vexil::simulated
