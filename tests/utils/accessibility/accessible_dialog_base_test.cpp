#include "utils/accessibility/accessible_dialog_base.h"

#include "support/event_loop.h"
#include "support/fake_desktop.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTemporaryFile>
#include <QtGui/QAccessible>

#include <gtest/gtest.h>

#include <fstream>
#include <memory>

namespace vexil::utils::accessibility {
namespace {

using namespace std::chrono_literals;

class AccessibleDialogBaseTest : public testing::Test {
protected:
    AccessibleDialogBaseTest() {
        environment.sheet =
            "QLabel#a { color: #123456; }\nQPushButton#b { image: url(\":/question.svg\"); }\n";
        environment.folder = (temporary.path() + "/pictures").toStdString();
    }

    [[nodiscard]] QStringList pictures() const {
        return QDir(temporary.path() + "/pictures").entryList(QDir::Files, QDir::Name);
    }

    static QString readAll(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString("(missing)");
    }

    /// As Qt hands out Windows' message of a change of theme. True if a filter has kept it.
    static bool sendThemeMessage() {
        struct {
            void* window = nullptr;
            std::uint32_t number = 794;
            std::uint64_t rest[5] = {};
        } message;
        qintptr result = 0;
        return QAbstractEventDispatcher::instance()->filterNativeEvent("windows_generic_MSG", &message,
                                                                       &result);
    }

    test::FakeDialogEnvironment environment;
    QTemporaryDir temporary;
};

TEST_F(AccessibleDialogBaseTest, WearsTheSuitesStylesheet) {
    const AccessibleDialogBase dialog;
    EXPECT_EQ(dialog.styleSheet().toStdString(), *environment.sheet);
    EXPECT_EQ(dialog.baseStyleSheet().toStdString(), *environment.sheet);
    EXPECT_TRUE(dialog.testAttribute(static_cast<Qt::WidgetAttribute>(120)));
}

TEST_F(AccessibleDialogBaseTest, StartsInHighContrastWhereThatIsOn) {
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    EXPECT_TRUE(dialog.styleSheet().startsWith("QLabel#a {\n  color: #ffffff;\n}\nQPushButton#b {\n"))
        << dialog.styleSheet().toStdString();
    EXPECT_EQ(dialog.baseStyleSheet().toStdString(), *environment.sheet);
}

TEST_F(AccessibleDialogBaseTest, TakesEachNameFromItsOwnSystemColour) {
    auto& desktop = environment.fakeDesktop;
    desktop.highContrast = 1;
    for (std::uint32_t i = 0; i < desktop.colors.size(); ++i) {
        desktop.colors[i] = i; // as red
    }
    environment.sheet =
        "QWidget#w{a:b}QLabel#l{a:b}QLabel#d:disabled{a:b}QLabel#s:selected{a:b}QLabel#i:active{a:b}"
        "QPushButton#p:hover{a:b}QPushButton#n{a:b}";
    const AccessibleDialogBase dialog;
    const auto sheet = dialog.styleSheet();
    for (const char* part : {
             "QWidget#w {\n  a: b;\n  background-color: #010000;\n}",            // desktop
             "QLabel#l {\n  a: b;\n  color: #080000;\n}",                        // text of windows
             "QLabel#d:disabled {\n  a: b;\n  color: #110000;\n}",               // greyed text
             "QLabel#s:selected {\n  a: b;\n  color: #0e0000;\n}",               // highlighted text
             "QLabel#i:active {\n  a: b;\n  color: #170000;\n}",                 // text of hints
             "background-color: #0d0000;\n  border: none;\n  color: #0f0000;\n", // highlight, button face
             "background-color: #0f0000;\n  border: 1px solid #120000;\n  color: #120000;\n", // face, text of
                                                                                              // buttons
         }) {
        EXPECT_TRUE(sheet.contains(part)) << part << "\n" << sheet.toStdString();
    }
}

TEST_F(AccessibleDialogBaseTest, FollowsAThemeATenthOfASecondAfterTheMessage) {
    AccessibleDialogBase dialog;
    environment.fakeDesktop.useDarkOnLight();
    environment.fakeDesktop.changeTheme();
    test::runEvents(50ms);
    EXPECT_EQ(dialog.styleSheet(), dialog.baseStyleSheet()) << "not before the new colours can be read";
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(test::runEventsUntil([&] { return dialog.styleSheet().contains("color: #000000"); }, 1s));
    EXPECT_LE(clock.elapsed(), 50 + 17 + 60)
        << "the rest of the tenth, a frame, and what a busy machine adds";
}

TEST_F(AccessibleDialogBaseTest, RestoresTheTextExactlyWhenHighContrastEnds) {
    environment.fakeDesktop.useLightOnDark();
    AccessibleDialogBase dialog;
    ASSERT_NE(dialog.styleSheet().toStdString(), *environment.sheet);
    for (int i = 0; i < 3; ++i) {
        environment.fakeDesktop.highContrast = 0;
        environment.fakeDesktop.changeTheme();
        QElapsedTimer clock;
        clock.start();
        ASSERT_TRUE(test::runEventsUntil(
            [&] { return dialog.styleSheet().toStdString() == *environment.sheet; }, 1s));
        EXPECT_LE(clock.elapsed(), 100 + 17 + 60)
            << "a tenth of a second, a frame, and what a busy machine adds";
        environment.fakeDesktop.highContrast = 1;
        environment.fakeDesktop.changeTheme();
        ASSERT_TRUE(test::runEventsUntil(
            [&] { return dialog.styleSheet().toStdString() != *environment.sheet; }, 1s));
    }
}

TEST_F(AccessibleDialogBaseTest, ReadsTheColoursAnewAtEachChange) {
    environment.fakeDesktop.useLightOnDark();
    AccessibleDialogBase dialog;
    environment.fakeDesktop.useDarkOnLight();
    environment.fakeDesktop.changeTheme();
    EXPECT_TRUE(test::runEventsUntil(
        [&] { return dialog.styleSheet().contains("QLabel#a {\n  color: #000000"); }, 1s));
}

TEST_F(AccessibleDialogBaseTest, HearsNativeMessagesOnlyWhileItLives) {
    {
        AccessibleDialogBase dialog;
        environment.fakeDesktop.useLightOnDark();
        EXPECT_TRUE(sendThemeMessage());
        EXPECT_TRUE(test::runEventsUntil([&] { return dialog.styleSheet().contains("#ffffff"); }, 1s));
    }
    EXPECT_FALSE(sendThemeMessage());
}

TEST_F(AccessibleDialogBaseTest, KeepsTheMessageFromDialogsThatAreOlder) {
    AccessibleDialogBase older;
    AccessibleDialogBase newer;
    environment.fakeDesktop.useLightOnDark();
    EXPECT_TRUE(sendThemeMessage());
    test::runEvents(200ms);
    EXPECT_NE(newer.styleSheet(), newer.baseStyleSheet());
    EXPECT_EQ(older.styleSheet(), older.baseStyleSheet());
}

TEST_F(AccessibleDialogBaseTest, MayBeClosedWhileAChangeIsStillToBeFollowed) {
    auto dialog = std::make_unique<AccessibleDialogBase>();
    environment.fakeDesktop.changeTheme();
    dialog.reset();
    test::runEvents(150ms);
}

TEST_F(AccessibleDialogBaseTest, ShowsPicturesInTheColourOfText) {
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    ASSERT_EQ(pictures().size(), 1);
    const QString path = temporary.path() + "/pictures/" + pictures().first();
    EXPECT_TRUE(pictures().first().startsWith("question_"));
    EXPECT_TRUE(path.endsWith(".svg"));
    EXPECT_TRUE(dialog.styleSheet().contains("image: url(\"" + path + "\")"))
        << dialog.styleSheet().toStdString();
    EXPECT_TRUE(readAll(path).contains("fill=\"#ffffff\"")) << readAll(path).toStdString();
}

TEST_F(AccessibleDialogBaseTest, KeepsThePicturesOfEarlierColoursUntilItIsGone) {
    environment.fakeDesktop.useLightOnDark();
    {
        AccessibleDialogBase dialog;
        for (int i = 2; i <= 3; ++i) {
            environment.fakeDesktop.changeTheme();
            ASSERT_TRUE(test::runEventsUntil([&] { return pictures().size() == i; }, 1s));
        }
        EXPECT_EQ(dialog.findChildren<QTemporaryFile*>().size(), 3);
    }
    EXPECT_TRUE(pictures().isEmpty());
}

TEST_F(AccessibleDialogBaseTest, LeavesAPictureAloneThatCannotBeRead) {
    environment.sheet = "QLabel#a { image: url(\":/missing.svg\"); icon: none; Image: url(:/question.svg) }";
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    EXPECT_TRUE(dialog.styleSheet().contains("  image: url(\":/missing.svg\");\n"));
    EXPECT_TRUE(dialog.styleSheet().contains("  icon: none;\n"));
    EXPECT_TRUE(dialog.styleSheet().contains("  Image: url(:/question.svg);\n"));
    EXPECT_TRUE(pictures().isEmpty());
}

TEST_F(AccessibleDialogBaseTest, LooksForPicturesWithoutRegardToCase) {
    environment.sheet = "QLabel#a { ICON: url(\":/error.svg\"); Image: url(\":/warning.svg\") }";
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    ASSERT_EQ(pictures().size(), 2);
    EXPECT_TRUE(pictures().at(0).startsWith("error_"));
    EXPECT_TRUE(pictures().at(1).startsWith("warning_"));
}

TEST_F(AccessibleDialogBaseTest, ReadsAPictureAsText) {
    environment.sheet = "QLabel#a { image: url(\":/lines.svg\") }";
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    ASSERT_EQ(pictures().size(), 1);
    EXPECT_EQ(readAll(temporary.path() + "/pictures/" + pictures().first()),
              "<svg>\n<path fill=\"#ffffff\"/>\n</svg>\n");
}

TEST_F(AccessibleDialogBaseTest, CopiesAPictureWithoutANameAndWithoutAFillUnderANameOfItsOwn) {
    environment.sheet = "QLabel#a { image: url(\":/.svg\") }";
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    ASSERT_EQ(pictures().size(), 1);
    EXPECT_TRUE(pictures().first().startsWith("temp_svg_")) << pictures().first().toStdString();
    EXPECT_EQ(readAll(temporary.path() + "/pictures/" + pictures().first()),
              "<svg><path d=\"M0 0\"/></svg>\n");
}

TEST_F(AccessibleDialogBaseTest, LeavesAPictureAloneWhereNoCopyCanBeWritten) {
    const auto file = (temporary.path() + "/file").toStdString();
    std::ofstream(file) << "in the way";
    environment.folder = file + "/below";
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    EXPECT_TRUE(dialog.styleSheet().contains("image: url(\":/question.svg\")"));
}

TEST_F(AccessibleDialogBaseTest, LeavesAPictureAloneWhereTheSuiteHasNoFolderForCopies) {
    environment.folder = "";
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    EXPECT_TRUE(dialog.styleSheet().contains("image: url(\":/question.svg\")"));
}

TEST_F(AccessibleDialogBaseTest, TakesAFolderWithASeparatorAtItsEnd) {
    environment.folder = (temporary.path() + "/pictures/").toStdString();
    environment.fakeDesktop.useLightOnDark();
    const AccessibleDialogBase dialog;
    EXPECT_EQ(pictures().size(), 1);
}

TEST_F(AccessibleDialogBaseTest, IsTheClientAreaOfAWindowToAssistiveTechnology) {
    AccessibleDialogBase first;
    AccessibleDialogBase second;
    auto* a = QAccessible::queryAccessibleInterface(&first);
    auto* b = QAccessible::queryAccessibleInterface(&second);
    ASSERT_NE(a, nullptr);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(static_cast<int>(a->role()), 10);
    EXPECT_EQ(static_cast<int>(b->role()), 10);
    EXPECT_EQ(a->object(), &first);
    EXPECT_EQ(b->object(), &second);
    QDialog plain;
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&plain)->role(), QAccessible::Dialog);
}

} // namespace
} // namespace vexil::utils::accessibility
