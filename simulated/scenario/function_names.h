#pragma once

#include "simulated/scenario/field_reader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace vexil::simulated {

/// What functions of a vendor's library answer, by their names; a function without an entry succeeds.
using FunctionStatuses = std::map<std::string, std::int32_t>;

/// 0 for success.
inline std::int32_t statusOf(const FunctionStatuses& statuses, const std::string& function) {
    const auto found = statuses.find(function);
    return found == statuses.end() ? 0 : found->second;
}

/// Reads the object "statuses", one field for each function that is to answer something else than success.
inline FunctionStatuses readStatuses(FieldReader& reader, std::span<const char* const> functions) {
    FunctionStatuses statuses;
    auto object = reader.object("statuses");
    if (!object) {
        return statuses;
    }
    using Limits = std::numeric_limits<std::int32_t>;
    for (const std::string function : functions) {
        if (const auto status = object->integer(function, Limits::min(), Limits::max())) {
            statuses[function] = static_cast<std::int32_t>(*status);
        }
    }
    object->finish();
    return statuses;
}

/// Reads the list "missingFunctions": names of functions that the library is to lack.
inline std::vector<std::string> readMissingFunctions(FieldReader& reader,
                                                     std::span<const char* const> functions) {
    auto missing = reader.texts("missingFunctions");
    for (const auto& name : missing) {
        if (std::ranges::find(functions, name) == functions.end()) {
            reader.fail("missingFunctions", "\"" + name + "\" is no function of this library");
        }
    }
    return missing;
}

/// Reads "missingFunction": the one function that the library is to lack; empty if the field is absent.
inline std::string readMissingFunction(FieldReader& reader, const std::vector<std::string>& functions) {
    return reader.has("missingFunction") ? functions[reader.choice("missingFunction", functions)]
                                         : std::string();
}

/// A 32-bit value that may be absent.
inline std::optional<std::int32_t> readInt32(FieldReader& reader, const std::string& field) {
    using Limits = std::numeric_limits<std::int32_t>;
    const auto value = reader.integer(field, Limits::min(), Limits::max());
    return value ? std::optional(static_cast<std::int32_t>(*value)) : std::nullopt;
}

inline std::optional<std::uint32_t> readUint32(FieldReader& reader, const std::string& field) {
    const auto value = reader.integer(field, 0, std::numeric_limits<std::uint32_t>::max());
    return value ? std::optional(static_cast<std::uint32_t>(*value)) : std::nullopt;
}

} // namespace vexil::simulated
