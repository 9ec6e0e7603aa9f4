#pragma once

#include "simulated/scenario/function_names.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexil::simulated {

/// One logical adapter, of which a card may have several.
struct AdlAdapter {
    std::int32_t index = 0;
    std::int32_t bus = 0;
    std::int32_t device = 0;
    std::int32_t function = 0;
    std::int32_t active = 1;
    std::int32_t activeStatus = 0;
};

/// What one of the ten thermal controllers of an Overdrive 5 card answers.
struct AdlThermalController {
    std::optional<std::int32_t> domain;
    std::int32_t enumStatus = 0;
    std::optional<std::int32_t> millidegrees;
    std::int32_t temperatureStatus = 0;
};

/// One card as ADL tells of it. What is absent is left unwritten by a call, whatever its status.
struct AdlCardSection {
    std::vector<AdlAdapter> adapters; ///< one at the card's own location by default
    std::optional<std::int32_t> overdriveSupported;
    std::optional<std::int32_t> overdriveVersion;
    std::optional<std::int32_t> millidegrees;
    std::vector<AdlThermalController> thermalControllers;
    std::optional<std::int64_t> memoryBytes;
    std::optional<std::int32_t> usedMegabytes;
    FunctionStatuses statuses;
};

/// The library itself.
struct AdlSection {
    std::optional<std::int32_t> adapterCount; ///< as told; by default the number of adapters
    FunctionStatuses statuses;
    std::vector<std::string> missingFunctions;
};

/// Reads the section "adl" of a card; nothing if it has none. `nextIndex` numbers adapters that do not say
/// theirs, over all cards.
[[nodiscard]] std::optional<AdlCardSection> readAdlCard(FieldReader& card, const std::string& location,
                                                        std::int32_t& nextIndex);

/// Reads the section "adl" of a scenario.
[[nodiscard]] AdlSection readAdl(FieldReader& scenario);

} // namespace vexil::simulated
