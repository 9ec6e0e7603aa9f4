#include "host/gui/language_translator.h"

#include "host/core/utf8_path.h"

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

namespace vexil::host {
namespace {

class LanguageTranslation : public ::testing::Test {
protected:
    LanguageTranslation() {
        language_.add(pathFromUtf8(VEXIL_SOURCE_DIR "/host/languages/en.json"), false);
        QCoreApplication::installTranslator(&translator_);
    }

    int count_ = 0;
    QCoreApplication application_{count_, nullptr};
    Language language_;
    LanguageTranslator translator_{language_, "VIDEO_CARD"};
};

TEST_F(LanguageTranslation, AnswersTheModulesKeysFromTheLanguageFile) {
    EXPECT_EQ(QCoreApplication::translate("VIDEO_CARD", "CANCEL"), "Cancel");
    EXPECT_EQ(QCoreApplication::translate("VIDEO_CARD", "ESC_INSTRUCTION"), "Press Esc to end the test");
    EXPECT_EQ(QCoreApplication::translate("VIDEO_CARD", "DURATION_(MINUTES)"), "Duration (minutes)");
}

TEST_F(LanguageTranslation, LeavesWhatIsNoKeyAsItStands) {
    EXPECT_EQ(QCoreApplication::translate("VIDEO_CARD", "NO_SUCH_KEY"), "NO_SUCH_KEY");
    EXPECT_EQ(QCoreApplication::translate("VIDEO_CARD", ""), "");
}

TEST_F(LanguageTranslation, LeavesOtherContextsToOthers) {
    EXPECT_EQ(QCoreApplication::translate("StressTestDialog", "CANCEL"), "CANCEL");
}

} // namespace
} // namespace vexil::host
