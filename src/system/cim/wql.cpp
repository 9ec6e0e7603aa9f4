#include "system/cim/wql.h"

#include <algorithm>

namespace vexil::system {

namespace {

// The "C" locale's letters, whatever the host has set: WQL's words and names are ASCII.
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool isNameCharacter(char c) { return isLetter(c) || (c >= '0' && c <= '9'); }
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool atEnd() {
        skipBlanks();
        return rest_.empty();
    }

    bool symbol(char c) {
        skipBlanks();
        if (rest_.empty() || rest_.front() != c) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    std::optional<std::string> name() {
        skipBlanks();
        if (rest_.empty() || !isLetter(rest_.front())) {
            return std::nullopt;
        }
        const auto end = std::find_if_not(rest_.begin(), rest_.end(), isNameCharacter);
        std::string name(rest_.begin(), end);
        rest_.remove_prefix(name.size());
        return name;
    }

    bool keyword(std::string_view word) {
        const auto found = name();
        return found && equalIgnoringCase(*found, word);
    }

    std::optional<std::string> quotedText() {
        skipBlanks();
        if (rest_.empty() || (rest_.front() != '\'' && rest_.front() != '"')) {
            return std::nullopt;
        }
        const char quote = rest_.front();
        std::string text;
        for (std::size_t i = 1; i < rest_.size(); ++i) {
            if (rest_[i] == quote) {
                rest_.remove_prefix(i + 1);
                return text;
            }
            if (rest_[i] == '\\' && ++i == rest_.size()) {
                break;
            }
            text += rest_[i];
        }
        return std::nullopt;
    }

private:
    void skipBlanks() {
        while (!rest_.empty() && isBlank(rest_.front())) {
            rest_.remove_prefix(1);
        }
    }

    std::string_view rest_;
};

} // namespace

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::optional<WqlQuery> parseWql(std::string_view text) {
    Reader reader(text);
    WqlQuery query;
    if (!reader.keyword("SELECT")) {
        return std::nullopt;
    }
    do {
        auto property = reader.symbol('*') ? std::optional<std::string>("*") : reader.name();
        if (!property) {
            return std::nullopt;
        }
        query.properties.push_back(*std::move(property));
    } while (reader.symbol(','));
    if (!reader.keyword("FROM")) {
        return std::nullopt;
    }
    auto className = reader.name();
    if (!className) {
        return std::nullopt;
    }
    query.className = *std::move(className);
    if (reader.atEnd()) {
        return query;
    }
    if (!reader.keyword("WHERE")) {
        return std::nullopt;
    }
    auto property = reader.name();
    if (!property || !reader.symbol('=')) {
        return std::nullopt;
    }
    auto value = reader.quotedText();
    if (!value || !reader.atEnd()) {
        return std::nullopt;
    }
    query.condition = WqlCondition{*std::move(property), *std::move(value)};
    return query;
}

} // namespace vexil::system
