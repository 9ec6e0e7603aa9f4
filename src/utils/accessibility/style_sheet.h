#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::utils::accessibility {

/// Values by property name, as written.
using StyleProperties = std::map<std::string, std::string, std::less<>>;

struct StyleRule {
    std::string selector;
    StyleProperties properties;

    friend bool operator==(const StyleRule&, const StyleRule&) = default;
};

/// The rules of `text` in the order in which their selectors first appear; a selector that appears again adds
/// to its rule. Any text can be read: what is no rule is left out. Comments are not known, and nothing is
/// known of quotation marks: a stylesheet for it has no braces or semicolons in its values.
[[nodiscard]] std::vector<StyleRule> parseStyleSheet(std::string_view text);

/// The text of all rules that have properties.
[[nodiscard]] std::string serializeStyleSheet(const std::vector<StyleRule>& rules);

} // namespace vexil::utils::accessibility
