#include "style_sheet_exercise.h"

#include "utils/accessibility/high_contrast_style.h"
#include "utils/accessibility/style_sheet.h"
#include "utils/accessibility/svg_recoloring.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <utility>

namespace vexil::test {

namespace {

using namespace utils::accessibility;

const HighContrastStyle style = {"#000000", "#101010", "#ffffff", "#3ff23f",
                                 "#ffff00", "#1aebff", "#000001", "#fefefe"};

constexpr std::array<std::string_view, 40> vocabulary = {"{",
                                                         "}",
                                                         ";",
                                                         ":",
                                                         "\"",
                                                         "(",
                                                         ")",
                                                         "\n",
                                                         " ",
                                                         "\t",
                                                         "\r",
                                                         std::string_view("\0", 1),
                                                         "\xC3\xA9",
                                                         "\xFF",
                                                         "QWidget#",
                                                         "QLabel#",
                                                         "QPushButton",
                                                         "QSpinBox#",
                                                         "QComboBox#",
                                                         "QStackedWidget#",
                                                         "border_widget",
                                                         "header_close",
                                                         "[objectName*=\"b\"]",
                                                         ":hover",
                                                         ":focus",
                                                         ":disabled",
                                                         ":selected",
                                                         "image",
                                                         "ICON",
                                                         "url(\":/",
                                                         ".svg",
                                                         "\")",
                                                         "=",
                                                         "fill=\"",
                                                         "#AbCdEf",
                                                         "color",
                                                         "border-color",
                                                         "animation",
                                                         "/*",
                                                         "*/"};

} // namespace

std::string exerciseStyleSheet(std::string_view text) {
    auto rules = parseStyleSheet(text);
    for (const auto& rule : rules) {
        for (const auto& [name, value] : rule.properties) {
            const auto path = quotedPath(value);
            if (path && (path->empty() || path->find('"') != std::string_view::npos)) {
                return "a path that is empty or has a quotation mark";
            }
            static_cast<void>(svgBaseName(value));
        }
    }
    const auto recolored = recolorSvg(text, style.textColor);
    if (text.find("fill=\"") == std::string_view::npos && recolored != text) {
        return "a picture without a fill was changed";
    }

    std::erase_if(rules, [](const StyleRule& rule) { return rule.properties.empty(); });
    if (parseStyleSheet(serializeStyleSheet(rules)) != rules) {
        return "a stylesheet that reads differently after it was written";
    }
    for (auto& rule : rules) {
        applyHighContrastRules(rule, style);
    }
    const auto once = rules;
    for (auto& rule : rules) {
        applyHighContrastRules(rule, style);
    }
    return rules == once ? "" : "rules that change what they have changed before";
}

StyleSheetGenerator::StyleSheetGenerator(std::uint32_t seed, std::vector<std::string> corpus)
    : random_(seed), corpus_(std::move(corpus)) {}

std::size_t StyleSheetGenerator::below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
}

std::string StyleSheetGenerator::next() { return corpus_.empty() || below(2) == 0 ? words() : mutation(); }

std::string StyleSheetGenerator::words() {
    std::string text;
    for (std::size_t left = below(120); left > 0; --left) {
        text += vocabulary[below(vocabulary.size())];
    }
    return text;
}

std::string StyleSheetGenerator::mutation() {
    std::string text = corpus_[below(corpus_.size())];
    for (std::size_t left = 1 + below(8); left > 0; --left) {
        const std::size_t place = below(text.size() + 1);
        const std::size_t length = std::min(below(40) + 1, text.size() - place);
        switch (below(4)) {
        case 0:
            text.erase(place, length);
            break;
        case 1:
            text.insert(below(text.size() + 1), text.substr(place, length));
            break;
        case 2:
            text.insert(place, vocabulary[below(vocabulary.size())]);
            break;
        default:
            if (place < text.size()) {
                text[place] = static_cast<char>(below(256));
            }
        }
    }
    return text;
}

std::vector<std::string> readCorpus(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::ranges::sort(files);
    std::vector<std::string> texts;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return texts;
}

} // namespace vexil::test
