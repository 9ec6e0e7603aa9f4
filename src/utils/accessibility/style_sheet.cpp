#include "utils/accessibility/style_sheet.h"

#include "utils/accessibility/text_pieces.h"

#include <unordered_map>

namespace vexil::utils::accessibility {

namespace {

/// The value goes to the end of the declaration: that of a picture, url(":/name.svg"), has a colon itself.
void enterDeclaration(std::string_view declaration, StyleProperties& properties) {
    const auto colon = declaration.find(':');
    if (colon == std::string_view::npos) {
        return;
    }
    const auto name = trimmed(declaration.substr(0, colon));
    if (!name.empty()) {
        properties.insert_or_assign(std::string(name), std::string(trimmed(declaration.substr(colon + 1))));
    }
}

} // namespace

std::vector<StyleRule> parseStyleSheet(std::string_view text) {
    std::vector<StyleRule> rules;
    std::unordered_map<std::string_view, std::size_t> places;
    for (const auto part : split(text, '}')) {
        const auto pieces = split(part, '{');
        if (pieces.size() != 2) {
            continue;
        }
        const auto selector = trimmed(pieces[0]);
        const auto [place, isNew] = places.try_emplace(selector, rules.size());
        if (isNew) {
            rules.push_back({std::string(selector), {}});
        }
        for (const auto declaration : split(pieces[1], ';')) {
            enterDeclaration(declaration, rules[place->second].properties);
        }
    }
    return rules;
}

std::string serializeStyleSheet(const std::vector<StyleRule>& rules) {
    std::string text;
    for (const auto& rule : rules) {
        if (rule.properties.empty()) {
            continue;
        }
        text += rule.selector + " {\n";
        for (const auto& [name, value] : rule.properties) {
            text += "  " + name + ": " + value + ";\n";
        }
        text += "}\n";
    }
    return text;
}

} // namespace vexil::utils::accessibility
