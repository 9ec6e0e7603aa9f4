#include "host/core/exit_code.h"
#include "host/core/language.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace vexil::host {
namespace {

using Lines = std::vector<std::string>;

class Languages : public ::testing::Test {
protected:
    Languages() : folder_(vexil::tests::testFolder()) {
        write("en.json",
              R"x({"code":"en","texts":{"SURFACES":"Surfaces tested","OK":"Fine","END._":"It ended.",
                             "AGAIN.":"Try again.","(KEY)":"Bracketed"}})x");
        write("de.json", R"({"code":"de","texts":{"SURFACES":"Geprüfte Flächen"}})");
    }
    ~Languages() override { std::filesystem::remove_all(folder_); }

    void write(const std::string& name, const std::string& text) { std::ofstream(folder_ / name) << text; }
    [[nodiscard]] Language english() const { return loadLanguage(folder_, "", ""); }
    [[nodiscard]] std::string errorOf(const std::string& choice) const {
        try {
            static_cast<void>(loadLanguage(folder_, choice, ""));
        } catch (const HostError& error) {
            EXPECT_EQ(error.code(), ExitCode::Usage);
            return error.what();
        }
        return "no error";
    }

    std::filesystem::path folder_;
};

TEST_F(Languages, TranslateAKeyThatIsTheWholeMessage) {
    EXPECT_EQ(english().lines("SURFACES"), Lines{"Surfaces tested"});
}

TEST_F(Languages, TranslateAKeyInFrontOfItsNumbers) {
    EXPECT_EQ(english().text("SURFACES: 50/50"), "Surfaces tested: 50/50");
}

TEST_F(Languages, TranslateTheKeysInsideALineWithTabs) {
    EXPECT_EQ(english().text("SURFACES \t/\t OK: 48°C"), "Surfaces tested \t/\t Fine: 48°C");
}

TEST_F(Languages, ShowAnUnknownKeyAsItStands) {
    EXPECT_EQ(english().text("NOT_A_KEY"), "NOT_A_KEY");
    EXPECT_EQ(english().text("SURFACES_TESTED"), "SURFACES_TESTED");
    EXPECT_EQ(english().text(""), "");
}

TEST_F(Languages, LeaveAQuotedWordAloneThatReadsLikeAKey) {
    EXPECT_EQ(english().text(R"({"name": "OK", "x": 1})"), R"({"name": "OK", "x": 1})");
}

TEST_F(Languages, ShowTheLinesThatABarJoinsOneAfterAnother) {
    EXPECT_EQ(english().lines("END._|NOT_A_KEY|AGAIN."), (Lines{"It ended.", "NOT_A_KEY", "Try again."}));
    EXPECT_EQ(english().text("END._|AGAIN."), "It ended.\nTry again.");
}

TEST_F(Languages, PreferAWholeKeyWithBracketsToItsPieces) {
    EXPECT_EQ(english().text("(KEY)"), "Bracketed");
    EXPECT_EQ(english().text("(KEY): 7"), "Bracketed: 7");
}

TEST_F(Languages, PutTheUsersLanguageOverEnglish) {
    const auto german = loadLanguage(folder_, "", "de_AT");
    EXPECT_EQ(german.code(), "de");
    EXPECT_EQ(german.text("SURFACES"), "Geprüfte Flächen");
    EXPECT_EQ(german.text("END._"), "It ended.");
}

TEST_F(Languages, FallBackOnEnglishForAUserWithoutAFile) {
    EXPECT_EQ(loadLanguage(folder_, "", "fr_FR").code(), "en");
    EXPECT_EQ(loadLanguage(folder_, "", "C").code(), "en");
}

TEST_F(Languages, AreChosenByCodeOrByFileOverTheUsersOwn) {
    EXPECT_EQ(loadLanguage(folder_, "de", "en_GB").code(), "de");
    write("own.json", R"({"code":"x","texts":{"OK":"Aye"}})");
    EXPECT_EQ(loadLanguage(folder_, (folder_ / "own.json").string(), "de").text("OK"), "Aye");
}

TEST_F(Languages, NameAnUnknownChoiceAndWhatThereIs) {
    EXPECT_EQ(errorOf("tlh"), "unknown language 'tlh': there is de, en, or name the path of a language file");
}

TEST_F(Languages, NameAChoiceThatNoFileCanHaveForAName) {
    const std::string name(300, 'a');
    EXPECT_TRUE(errorOf(name).starts_with("unknown language '" + name + "': ")) << errorOf(name);
    EXPECT_EQ(loadLanguage(folder_, "", name).code(), "en") << "nor has the user's language one";
}

TEST_F(Languages, NameAFolderThatIsNoFile) {
    const auto path = folder_.string();
    EXPECT_EQ(errorOf(path), "the language file '" + path + "' cannot be used: it cannot be opened");
}

TEST_F(Languages, NameTheFileAndWhatIsWrongInIt) {
    struct Case {
        const char* text;
        const char* reason;
    };
    for (const auto& [text, reason] :
         {Case{"{", "it is no JSON object"}, Case{"[]", "it is no JSON object"},
          Case{"{}", "the text \"code\" is missing"},
          Case{R"({"code":"x"})", "the object \"texts\" is missing"},
          Case{R"({"code":"x","texts":{"OK":7}})", "\"texts\" has no text for \"OK\""},
          Case{R"({"code":"x","texts":{"OK":""}})", "\"texts\" has no text for \"OK\""}}) {
        write("bad.json", text);
        const auto path = (folder_ / "bad.json").string();
        EXPECT_EQ(errorOf(path), "the language file '" + path + "' cannot be used: " + reason);
    }
}

TEST_F(Languages, ThatAreBrokenBesideTheProgramAreAnInternalError) {
    write("en.json", "{");
    try {
        static_cast<void>(english());
        FAIL();
    } catch (const HostError& error) {
        EXPECT_EQ(error.code(), ExitCode::InternalError);
    }
}

} // namespace
} // namespace vexil::host
