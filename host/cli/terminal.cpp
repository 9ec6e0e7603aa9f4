#include "host/cli/terminal.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace vexil::host {

namespace {

/// By style.
constexpr std::array<std::string_view, 6> styleCodes = {"", "1", "2", "32", "31", "33"};

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }

/// The bytes of the first `count` characters.
std::size_t bytesOf(std::string_view text, std::size_t count) {
    std::size_t position = 0;
    for (; position < text.size(); ++position) {
        if (startsCharacter(text[position]) && count-- == 0) {
            break;
        }
    }
    return position;
}

} // namespace

std::string Terminal::paint(std::string_view text, Style style) const {
    const auto code = styleCodes.at(static_cast<std::size_t>(style));
    if (!traits_.colours || code.empty() || text.empty()) {
        return std::string(text);
    }
    return "\x1b[" + std::string(code) + 'm' + std::string(text) + "\x1b[0m";
}

std::string_view Terminal::glyph(std::string_view utf8, std::string_view ascii) const {
    return traits_.utf8 ? utf8 : ascii;
}

void Terminal::line(std::string_view text) {
    drawnLines_ = 0;
    if (traits_.interactive) {
        out_ << '\r' << text << "\x1b[K\n";
    } else {
        out_ << text << '\n';
    }
    out_.flush();
}

void Terminal::paragraph(std::string_view text, std::size_t indent, Style style) {
    const std::size_t width = std::max<std::size_t>(traits_.width, indent + 20) - indent;
    for (const auto& part : wrap(text, width)) {
        line(std::string(indent, ' ') + paint(part, style));
    }
}

void Terminal::redraw(std::string_view text) {
    out_ << '\r' << text << "\x1b[K";
    out_.flush();
}

void Terminal::redrawBlock(const std::vector<std::string>& lines) {
    // The cursor stands on the line below, and cannot go back to what has left the screen.
    const std::size_t shown = std::min<std::size_t>(lines.size(), std::max(traits_.height, 2U) - 1);
    std::string text = drawnLines_ == 0 ? "" : "\x1b[" + std::to_string(drawnLines_) + 'A';
    for (std::size_t i = 0; i < shown; ++i) {
        text += '\r' + lines[i] + "\x1b[K\n";
    }
    out_ << text << "\r\x1b[J" << std::flush;
    drawnLines_ = shown;
}

std::size_t columns(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, startsCharacter));
}

std::string fit(std::string_view text, std::size_t width) {
    constexpr std::string_view dots = "..";
    const auto length = columns(text);
    if (length <= width) {
        return std::string(text) + std::string(width - length, ' ');
    }
    if (width <= dots.size()) {
        return std::string(text.substr(0, bytesOf(text, width)));
    }
    return std::string(text.substr(0, bytesOf(text, width - dots.size()))) + std::string(dots);
}

std::string alignRight(std::string_view text, std::size_t width) {
    const auto length = columns(text);
    return std::string(length < width ? width - length : 0, ' ') + std::string(text);
}

std::vector<std::string> wrap(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;) {
        if (lines.empty() || columns(lines.back()) + 1 + columns(word) > width) {
            lines.push_back(word);
        } else {
            lines.back() += ' ' + word;
        }
    }
    return lines;
}

} // namespace vexil::host
