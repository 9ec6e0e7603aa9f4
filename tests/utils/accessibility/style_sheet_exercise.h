#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::test {

/// Sends a text down the road that a stylesheet takes into high contrast, and answers what did not hold on
/// the way; empty if all held. A memory error is for the sanitizer to tell.
[[nodiscard]] std::string exerciseStyleSheet(std::string_view text);

/// Makes texts: words of stylesheets in any order, and known stylesheets with pieces cut, doubled and
/// exchanged.
class StyleSheetGenerator {
public:
    StyleSheetGenerator(std::uint32_t seed, std::vector<std::string> corpus);
    [[nodiscard]] std::string next();

private:
    [[nodiscard]] std::size_t below(std::size_t limit);
    [[nodiscard]] std::string words();
    [[nodiscard]] std::string mutation();

    std::mt19937 random_;
    std::vector<std::string> corpus_;
};

/// The contents of the files of a folder, in the order of their names.
[[nodiscard]] std::vector<std::string> readCorpus(const std::filesystem::path& folder);

} // namespace vexil::test
