#include "host/core/host_keys.h"
#include "host/core/language.h"
#include "host/platform/process.h"
#include "module/video_card/catalogue.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace vexil::host {
namespace {

/// The labels and explanations of the stress tests' parameters.
constexpr std::array parameterKeys = {
    "DURATION_(MINUTES)", "DEFINES_THE_TEST_DURATION_IN_MINUTES.",
    "BURN_IN_MODE",       "BURN_IN_MODE_DESCRIPTION",
    "INFINITE",           "INFINITE_DESCRIPTION",
    "LOAD_LEVEL",         "LOAD_LEVEL_DESCRIPTION",
    "WINDOW_SCREEN_SIZE", "WINDOW_SIZE_DESCRIPTION",
};

/// Words of the suite's in the same header, which stand as they are in every language.
constexpr std::array words = {
    "Nvidia", "AMD", ".dll", "Ghz", R"(Global\\{2194ABA1-BFFA-4e6b-8C26-D191BB16F9E6})",
};

/// Every other text constant of the module's header of keys, read from the header itself: a new one is not
/// forgotten.
std::set<std::string> keysOfTheHeader() {
    std::ifstream stream(VEXIL_SOURCE_DIR "/src/core/message_keys.h");
    std::stringstream text;
    text << stream.rdbuf();
    const auto header = text.str();
    const std::regex constant("inline const std::string \\w+ =\\s*\"([^\"]+)\";");
    std::set<std::string> keys;
    for (std::sregex_iterator match(header.begin(), header.end(), constant), end; match != end; ++match) {
        keys.insert((*match)[1]);
    }
    for (const char* word : words) {
        EXPECT_EQ(keys.erase(word), 1U) << word;
    }
    return keys;
}

/// A key with bars in it stands for several lines, each with a text of its own.
std::set<std::string> allKeys() {
    auto joined = keysOfTheHeader();
    for (const auto& row : module::video_card::catalogue) {
        joined.insert({row.name, row.tooltip, row.group});
    }
    joined.insert(parameterKeys.begin(), parameterKeys.end());
    joined.insert(keys::all.begin(), keys::all.end());
    std::set<std::string> lines;
    for (const auto& key : joined) {
        std::istringstream stream(key);
        for (std::string line; std::getline(stream, line, '|');) {
            lines.insert(line);
        }
    }
    return lines;
}

Language english() { return loadLanguage(platform::programFolder() / "languages", "en", ""); }

TEST(EnglishTexts, AreReadFromAHeaderThatHasItsKeys) {
    // As many as the header defines today, at least: a pattern that stops matching must not pass for a full
    // language.
    EXPECT_GE(keysOfTheHeader().size(), 54U);
    EXPECT_TRUE(keysOfTheHeader().contains(
        "THIS_TEST_CANNOT_BE_PERFORMED_BECAUSE_THE_DEVICE_COULD_NOT_BE_IDENTIFIED_OR_HAS_BEEN_DISCONNECTED"));
}

TEST(EnglishTexts, StandForEveryKey) {
    const auto language = english();
    for (const auto& key : allKeys()) {
        const auto text = language.texts().find(key);
        ASSERT_NE(text, language.texts().end()) << key;
        EXPECT_NE(text->second.find_first_not_of(" \t\n"), std::string::npos) << key;
    }
}

TEST(EnglishTexts, AreAllUsedByAKey) {
    const auto keys = allKeys();
    const auto language = english();
    for (const auto& text : language.texts()) {
        EXPECT_TRUE(keys.contains(text.first)) << text.first;
    }
}

TEST(EnglishTexts, AreNotTheKeysThemselves) {
    const auto language = english();
    for (const auto& [key, text] : language.texts()) {
        EXPECT_EQ(text.find('_'), std::string::npos) << key;
    }
}

TEST(EnglishTexts, TellTheNumberOfTestedSurfaces) {
    EXPECT_EQ(english().text("TOTAL_SURFACES_TESTED: 50/50"), "Surfaces tested: 50/50");
}

TEST(EnglishTexts, TellAnInternalErrorInThreeLines) {
    EXPECT_EQ(
        english().lines("AN_INTERNAL_ERROR_OCCURRED._|THIS_DOES_NOT_INDICATE_A_FAILURE._|PLEASE_TRY_AGAIN."),
        (std::vector<std::string>{"An internal error occurred.",
                                  "This does not indicate a failure of the card.", "Please try again."}));
}

} // namespace
} // namespace vexil::host
