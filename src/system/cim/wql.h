#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::system {

/// `property` = 'value'; texts compare without regard to the case of ASCII letters.
struct WqlCondition {
    std::string property;
    std::string value;
};

struct WqlQuery {
    std::vector<std::string> properties; ///< "*" stands for itself
    std::string className;
    std::optional<WqlCondition> condition;
};

/// Understands the part of WQL that this system sends: SELECT a, b FROM c, with or without one WHERE that
/// compares a property with a text in single or double quotes, in which a backslash escapes the character
/// behind it. Nothing for everything else.
[[nodiscard]] std::optional<WqlQuery> parseWql(std::string_view text);

/// Names and texts in WQL compare so.
[[nodiscard]] bool equalIgnoringCase(std::string_view a, std::string_view b);

} // namespace vexil::system
