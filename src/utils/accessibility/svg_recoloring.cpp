#include "utils/accessibility/svg_recoloring.h"

#include "utils/accessibility/text_pieces.h"

#include <array>

namespace vexil::utils::accessibility {

namespace {

constexpr std::string_view fillMark = "fill=\"";

std::optional<std::string_view> firstFill(std::string_view svg) {
    const auto mark = svg.find(fillMark);
    if (mark == std::string_view::npos) {
        return std::nullopt;
    }
    const auto start = mark + fillMark.size();
    const auto end = svg.find('"', start);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    return svg.substr(start, end - start);
}

void removeAll(std::string& text, std::string_view part) {
    for (auto place = text.find(part); place != std::string::npos; place = text.find(part, place)) {
        text.erase(place, part.size());
    }
}

} // namespace

std::optional<std::string_view> quotedPath(std::string_view value) {
    for (auto open = value.find('"'); open != std::string_view::npos; open = value.find('"', open + 1)) {
        const auto close = value.find('"', open + 1);
        if (close == std::string_view::npos) {
            return std::nullopt;
        }
        if (close > open + 1) {
            return value.substr(open + 1, close - open - 1);
        }
    }
    return std::nullopt;
}

std::string recolorSvg(std::string_view svg, std::string_view color) {
    const auto old = firstFill(svg);
    if (!old || old->empty()) {
        return std::string(svg);
    }
    std::string text;
    text.reserve(svg.size());
    for (std::size_t place = 0; place < svg.size();) {
        if (equalsIgnoringCase(svg.substr(place, old->size()), *old)) {
            text += color;
            place += old->size();
        } else {
            text += svg[place++];
        }
    }
    return text;
}

std::string svgBaseName(std::string_view value) {
    static constexpr std::array<std::string_view, 4> wrapping = {"url(\":/", "=", "\")", ".svg"};
    std::string name(trimmed(value));
    for (const auto part : wrapping) {
        removeAll(name, part);
    }
    return name;
}

} // namespace vexil::utils::accessibility
