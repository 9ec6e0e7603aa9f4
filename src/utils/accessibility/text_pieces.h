#pragma once

#include <string>
#include <string_view>
#include <vector>

// Small operations on texts in UTF-8 whose marks are ASCII.
namespace vexil::utils::accessibility {

/// Empty pieces included.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Without regard to the case of ASCII letters.
[[nodiscard]] bool equalsIgnoringCase(std::string_view a, std::string_view b);

[[nodiscard]] inline bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

} // namespace vexil::utils::accessibility
