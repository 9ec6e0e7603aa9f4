#include "text_handlers.h"

#include <charconv>
#include <sstream>

namespace vexil::sal {

namespace {

bool isIdentifierCharacter(char c) {
    // Bytes of characters beyond ASCII are kept: they are letters of somebody's language.
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

void eraseAll(std::string& text, const std::string& piece) {
    for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece)) {
        text.erase(at, piece.size());
    }
}

int baseOf(NumberHandler::BaseManipulator manipulator) {
    std::ostringstream probe;
    probe << manipulator;
    const auto base = probe.flags() & std::ios_base::basefield;
    return base == std::ios_base::hex ? 16 : base == std::ios_base::oct ? 8 : 10;
}

} // namespace

void TextHandler::makeIdentifier(const std::string& text, std::string& identifier) {
    identifier.clear();
    for (const char c : text) {
        if (isIdentifierCharacter(c)) {
            identifier.push_back(c);
        } else if (!identifier.empty() && identifier.back() != '_') {
            identifier.push_back('_');
        }
    }
}

void TextHandler::normalize(std::string& text) {
    for (const char* mark : {"(R)", "(r)", "(TM)", "(tm)", "(C)", "(c)", "\u00AE", "\u2122", "\u00A9"}) {
        eraseAll(text, mark);
    }
    std::istringstream words(text);
    std::string tidied;
    for (std::string word; words >> word;) {
        tidied += (tidied.empty() ? "" : " ") + word;
    }
    text = tidied;
}

void TextHandler::toLower(std::string& text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
}

bool NumberText::parse(std::uint32_t& number, const std::string& text, BaseManipulator base) {
    const auto* end = text.data() + text.size();
    std::uint32_t parsed = 0;
    const auto result = std::from_chars(text.data(), end, parsed, baseOf(base));
    if (result.ec != std::errc() || result.ptr != end) {
        return false;
    }
    number = parsed;
    return true;
}

void NumberText::toText(std::string& text, std::uint32_t number) { text = std::to_string(number); }

} // namespace vexil::sal
