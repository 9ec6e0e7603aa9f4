#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::host {

/// The texts that message keys stand for.
class Language {
public:
    /// Without any text: every key is shown as it stands.
    Language() = default;

    /// Adds the texts of a language file, over those that are there. Throws `HostError` with a line that
    /// names the file and what is wrong in it: a usage error for a file that the user named, else an internal
    /// one.
    void add(const std::filesystem::path& file, bool namedByUser);

    /// The lines that a message is shown as. A "|" ends a line. What is no key is shown as it stands, with
    /// the keys inside it translated where blanks, colons or brackets set them off ("KEY: 50/50").
    [[nodiscard]] std::vector<std::string> lines(std::string_view message) const;
    /// The same, with the lines joined by line feeds.
    [[nodiscard]] std::string text(std::string_view message) const;

    /// As the file gives it: "en".
    [[nodiscard]] const std::string& code() const { return code_; }
    [[nodiscard]] const std::map<std::string, std::string, std::less<>>& texts() const { return texts_; }

private:
    [[nodiscard]] std::string translateLine(std::string_view line) const;

    std::string code_;
    std::map<std::string, std::string, std::less<>> texts_;
};

/// The language of the user: English with the texts of the choice over it, so that a text which a language
/// lacks is English. `choice` is the code of a file in `folder`, or the path of a file; empty for the
/// language that `userLanguage` ("de_DE") names, if there is one for it. Throws `UsageError` for a choice
/// that does not exist.
[[nodiscard]] Language loadLanguage(const std::filesystem::path& folder, const std::string& choice,
                                    const std::string& userLanguage);

} // namespace vexil::host
