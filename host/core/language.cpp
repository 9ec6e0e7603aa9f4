#include "host/core/language.h"

#include "host/core/exit_code.h"
#include "host/core/utf8_path.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <set>
#include <utility>

namespace vexil::host {

namespace {

using Json = nlohmann::json;

constexpr const char* extension = ".json";
constexpr const char* english = "en";
/// What sets a key off from the text around it.
constexpr std::string_view delimiters = " \t:[]()";

std::filesystem::path languageFile(const std::filesystem::path& folder, const std::string& code) {
    return folder / pathFromUtf8(code + extension);
}

/// "de_DE", then "de".
std::vector<std::string> candidates(const std::string& userLanguage) {
    std::vector<std::string> codes;
    if (!userLanguage.empty()) {
        codes = {userLanguage, userLanguage.substr(0, userLanguage.find('_'))};
    }
    return codes;
}

std::string knownCodes(const std::filesystem::path& folder) {
    std::set<std::string> codes;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == extension) {
            codes.insert(toUtf8(entry.path().stem()));
        }
    }
    std::string list;
    for (const auto& code : codes) {
        list += (list.empty() ? "" : ", ") + code;
    }
    return list;
}

} // namespace

void Language::add(const std::filesystem::path& file, bool namedByUser) {
    const auto refuse = [&](const std::string& reason) {
        throw HostError(namedByUser ? ExitCode::Usage : ExitCode::InternalError,
                        "the language file '" + toUtf8(file) + "' cannot be used: " + reason);
    };
    std::ifstream stream(file, std::ios::binary);
    // A folder can be opened on some systems, and never read.
    if (!stream || std::filesystem::is_directory(file)) {
        refuse("it cannot be opened");
    }
    const auto document = Json::parse(stream, nullptr, false);
    if (!document.is_object()) {
        refuse("it is no JSON object");
    }
    if (!document.contains("code") || !document["code"].is_string()) {
        refuse("the text \"code\" is missing");
    }
    if (!document.contains("texts") || !document["texts"].is_object()) {
        refuse("the object \"texts\" is missing");
    }
    code_ = document["code"].get<std::string>();
    for (const auto& [key, text] : document["texts"].items()) {
        if (!text.is_string() || text.get_ref<const std::string&>().empty()) {
            refuse("\"texts\" has no text for \"" + key + '"');
        }
        texts_[key] = text.get<std::string>();
    }
}

std::vector<std::string> Language::lines(std::string_view message) const {
    std::vector<std::string> lines;
    for (;;) {
        const auto end = message.find('|');
        lines.push_back(translateLine(message.substr(0, end)));
        if (end == std::string_view::npos) {
            return lines;
        }
        message.remove_prefix(end + 1);
    }
}

std::string Language::text(std::string_view message) const {
    std::string text;
    for (const auto& line : lines(message)) {
        text += (text.empty() ? "" : "\n") + line;
    }
    return text;
}

std::string Language::translateLine(std::string_view line) const {
    if (const auto whole = texts_.find(line); whole != texts_.end()) {
        return whole->second;
    }
    // A key may have brackets of its own, which the walk below would take for delimiters.
    const auto colon = line.find(": ");
    if (colon != std::string_view::npos) {
        if (const auto front = texts_.find(line.substr(0, colon)); front != texts_.end()) {
            return front->second + ": " + translateLine(line.substr(colon + 2));
        }
    }
    std::string text;
    while (!line.empty()) {
        const auto length = std::min(line.find_first_of(delimiters), line.size());
        const auto word = line.substr(0, length);
        const auto known = texts_.find(word);
        text += known == texts_.end() ? std::string(word) : known->second;
        line.remove_prefix(length);
        if (!line.empty()) {
            text += line.front();
            line.remove_prefix(1);
        }
    }
    return text;
}

Language loadLanguage(const std::filesystem::path& folder, const std::string& choice,
                      const std::string& userLanguage) {
    Language language;
    language.add(languageFile(folder, english), false);
    if (choice.empty()) {
        for (const auto& code : candidates(userLanguage)) {
            if (const auto file = languageFile(folder, code); fileExists(file)) {
                language.add(file, false);
                break;
            }
        }
        return language;
    }
    const bool isName = choice.find_first_of("/\\.") == std::string::npos;
    if (const auto file = languageFile(folder, choice); isName && fileExists(file)) {
        language.add(file, false);
    } else if (fileExists(pathFromUtf8(choice))) {
        language.add(pathFromUtf8(choice), true);
    } else {
        throw UsageError("unknown language '" + choice + "': there is " + knownCodes(folder) +
                         ", or name the path of a language file");
    }
    return language;
}

} // namespace vexil::host
