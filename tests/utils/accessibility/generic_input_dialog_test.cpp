#include "utils/accessibility/generic_input_dialog.h"

#include "support/event_loop.h"
#include "support/fake_desktop.h"
#include "support/key_translator.h"

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

#include <gtest/gtest.h>

#include <memory>

namespace vexil::utils::accessibility {
namespace {

class GenericInputDialogTest : public testing::Test {
protected:
    GenericInputDialog& make(std::uint32_t type = 1, std::uint32_t kind = 0) {
        request.title = "A_TITLE";
        request.text = "A_TEXT";
        request.kind = kind;
        request.type = type;
        request.result = 77;
        dialog = std::make_unique<GenericInputDialog>(request, "A_CONTEXT");
        return *dialog;
    }

    void show() {
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(test::runEventsUntil([this] { return dialog->isActiveWindow(); }));
    }

    template <typename Widget = QPushButton>
    Widget* find(const char* name) {
        return dialog->findChild<Widget*>(name);
    }

    /// As a user's key arrives: at the widget with the focus.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* target = dialog->focusWidget() == nullptr ? dialog.get() : dialog->focusWidget();
        QKeyEvent down(QEvent::KeyPress, key, modifiers);
        QKeyEvent up(QEvent::KeyRelease, key, modifiers);
        QApplication::sendEvent(target, &down);
        if (dialog->isVisible()) {
            QApplication::sendEvent(target, &up);
        }
    }

    [[nodiscard]] std::string focus() const {
        return dialog->focusWidget() == nullptr ? "" : dialog->focusWidget()->objectName().toStdString();
    }

    void mouse(QEvent::Type type, QPoint place, QPoint global) {
        QMouseEvent event(type, place, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(dialog.get(), &event);
    }

    test::FakeDialogEnvironment environment;
    test::KeyTranslator texts{"A_CONTEXT",
                              {{"A_TITLE", "Title"},
                               {"A_TEXT", "Message"},
                               {"OK", "Okay"},
                               {"CANCEL", "Leave it"},
                               {"YES", "Yes!"},
                               {"NO", "No!"},
                               {"CLOSE_POP_UP", "Shut"}}};
    InputRequest request;
    std::unique_ptr<GenericInputDialog> dialog;
};

TEST_F(GenericInputDialogTest, StartsWithTheAnswerOfAClosedDialog) {
    make();
    EXPECT_EQ(request.result, 0U);
}

TEST_F(GenericInputDialogTest, IsAFramelessBoxOfFixedSizeOnTop) {
    make();
    EXPECT_EQ(dialog->windowFlags().toInt() & ~0x10000, 264451);
    EXPECT_FALSE(dialog->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
}

TEST_F(GenericInputDialogTest, HasTheNamesThatStylesheetsRelyOn) {
    make();
    EXPECT_EQ(dialog->objectName(), "generic_input_dialog_base");
    for (const char* name :
         {"border_widget", "generic_input_widget_header", "generic_input_header_label",
          "generic_input_header_close", "generic_input_widget_instruction", "generic_input_instruction_label",
          "generic_input_widget_fields", "generic_input_widget_footer"}) {
        EXPECT_NE(find<QWidget>(name), nullptr) << name;
    }
    for (const char* name : {"verticalLayout", "verticalLayout_2", "verticalLayout_3", "verticalLayout_4"}) {
        EXPECT_NE(find<QVBoxLayout>(name), nullptr) << name;
    }
}

TEST_F(GenericInputDialogTest, TranslatesItsTextsInItsContext) {
    make(1);
    EXPECT_EQ(find<QLabel>("generic_input_header_label")->text(), "Title");
    EXPECT_EQ(find<QLabel>("generic_input_instruction_label")->text(), "Message");
    EXPECT_EQ(find("generic_input_button_ok")->text(), "Okay");
    EXPECT_EQ(find("generic_input_button_cancel")->text(), "Leave it");
    EXPECT_EQ(find("generic_input_header_close")->accessibleName(), "Shut");
    EXPECT_EQ(dialog->windowTitle(), "Title");
}

TEST_F(GenericInputDialogTest, NamesTheIconAfterTheKind) {
    const std::pair<std::uint32_t, const char*> rows[] = {
        {0, "generic_input_question_icon"},    {1, "generic_input_information_icon"},
        {2, "generic_input_information_icon"}, {3, "generic_input_warning_icon"},
        {4, "generic_input_error_icon"},       {5, "generic_input_question_icon"},
    };
    for (const auto& [kind, name] : rows) {
        make(0, kind);
        EXPECT_NE(find<QLabel>(name), nullptr) << kind;
        EXPECT_EQ(find<QLabel>("generic_input_icon"), nullptr) << kind;
    }
    for (const std::uint32_t kind : {6U, 4294967295U}) {
        make(0, kind);
        EXPECT_NE(find<QLabel>("generic_input_icon"), nullptr) << kind;
    }
}

TEST_F(GenericInputDialogTest, ShowsTheButtonsOfTheTypeWithTheirIds) {
    using Ids = std::vector<std::pair<std::string, int>>;
    const std::pair<std::uint32_t, Ids> rows[] = {
        {0, {{"generic_input_button_ok", 0}}},
        {1, {{"generic_input_button_ok", 0}, {"generic_input_button_cancel", 1}}},
        {2, {{"generic_input_button_yes", 2}, {"generic_input_button_no", 3}}},
        {3, {}},
        {4, {}},
    };
    for (const auto& [type, expected] : rows) {
        make(type);
        Ids ids;
        for (QPushButton* button :
             find<QWidget>("generic_input_widget_footer")->findChildren<QPushButton*>()) {
            ASSERT_NE(button->group(), nullptr);
            ids.emplace_back(button->objectName().toStdString(), button->group()->id(button));
        }
        EXPECT_EQ(ids, expected) << type;
    }
}

TEST_F(GenericInputDialogTest, AnswersWithTheValueOfTheButtonAndCloses) {
    const std::tuple<std::uint32_t, const char*, std::uint32_t> rows[] = {
        {0, "generic_input_button_ok", 1},     {1, "generic_input_button_ok", 1},
        {1, "generic_input_button_cancel", 2}, {2, "generic_input_button_yes", 3},
        {2, "generic_input_button_no", 4},
    };
    for (const auto& [type, name, answer] : rows) {
        make(type);
        show();
        find(name)->click();
        EXPECT_EQ(request.result, answer) << name;
        EXPECT_FALSE(dialog->isVisible()) << name;
    }
}

TEST_F(GenericInputDialogTest, AnswersZeroToTheCross) {
    make();
    show();
    request.result = 77;
    find("generic_input_header_close")->click();
    EXPECT_EQ(request.result, 0U);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(GenericInputDialogTest, AnswersZeroToEscapeWhateverTheButtonsAre) {
    for (const std::uint32_t type : {0U, 1U, 2U, 3U}) {
        make(type);
        show();
        request.result = 77;
        press(Qt::Key_Escape);
        EXPECT_EQ(request.result, 0U) << type;
        EXPECT_FALSE(dialog->isVisible()) << type;
    }
}

TEST_F(GenericInputDialogTest, ComesForwardBeforeItRuns) {
    make();
    QTimer::singleShot(0, dialog.get(), [this] {
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(environment.fakeDesktop.calls, (std::vector<std::string>{"press 97", "forward"}))
            << "one record, which is never released";
        EXPECT_EQ(environment.fakeDesktop.broughtForward, dialog.get());
        find("generic_input_button_cancel")->click();
    });
    dialog->exec();
    EXPECT_EQ(request.result, 2U);
}

TEST_F(GenericInputDialogTest, GivesTheFocusToOkOrYes) {
    for (const auto& [type, name] :
         {std::pair(0U, "generic_input_button_ok"), std::pair(1U, "generic_input_button_ok"),
          std::pair(2U, "generic_input_button_yes")}) {
        make(type);
        show();
        EXPECT_EQ(focus(), name);
        EXPECT_TRUE(find(name)->hasFocus());
    }
}

TEST_F(GenericInputDialogTest, MovesTheFocusWithUpAndDownAndWraps) {
    make(2);
    show();
    press(Qt::Key_Up);
    EXPECT_EQ(focus(), "generic_input_button_no") << "from the first to the last";
    press(Qt::Key_Up);
    EXPECT_EQ(focus(), "generic_input_button_yes");
    press(Qt::Key_Down);
    EXPECT_EQ(focus(), "generic_input_button_no");
    press(Qt::Key_Down);
    EXPECT_EQ(focus(), "generic_input_button_yes") << "from the last to the first";
}

TEST_F(GenericInputDialogTest, StaysOnTheOnlyButton) {
    make(0);
    show();
    for (const int key : {Qt::Key_Up, Qt::Key_Down}) {
        press(key);
        EXPECT_EQ(focus(), "generic_input_button_ok");
    }
}

TEST_F(GenericInputDialogTest, DoesNothingAtOtherKeysWhileAButtonHasTheFocus) {
    make(1);
    show();
    press(Qt::Key_Down);
    for (const int key : {Qt::Key_A, Qt::Key_Home, Qt::Key_PageUp, Qt::Key_F1}) {
        press(key);
        EXPECT_EQ(focus(), "generic_input_button_cancel");
        EXPECT_TRUE(dialog->isVisible());
    }
}

TEST_F(GenericInputDialogTest, SetsTheFocusUpAgainWhereNoAnswerHasIt) {
    make(1);
    show();
    for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_A}) {
        find("generic_input_header_close")->setFocus();
        press(key);
        EXPECT_EQ(focus(), "generic_input_button_ok") << key;
    }
}

TEST_F(GenericInputDialogTest, IsWorkedByTheKeyboardAlone) {
    make(1);
    show();
    std::vector<std::string> stops;
    for (int i = 0; i < 4; ++i) {
        stops.push_back(focus());
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(stops, (std::vector<std::string>{"generic_input_button_ok", "generic_input_button_cancel",
                                               "generic_input_header_close", "generic_input_button_ok"}));
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focus(), "generic_input_button_ok");
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_EQ(request.result, 2U);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(GenericInputDialogTest, TakesEnterForAPressOfTheButton) {
    make(2);
    show();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(request.result, 4U);
}

TEST_F(GenericInputDialogTest, LetsAScreenReaderReachItsTextsFirst) {
    environment.fakeDesktop.narrator = true;
    make(1);
    for (const char* name : {"generic_input_header_label", "generic_input_instruction_label"}) {
        EXPECT_EQ(static_cast<int>(find<QLabel>(name)->focusPolicy()), 11) << name;
    }
    EXPECT_EQ(focus(), "") << "no button takes the focus by itself";
    show();
    EXPECT_EQ(focus(), "generic_input_header_label");
    press(Qt::Key_Tab);
    EXPECT_EQ(focus(), "generic_input_instruction_label");
    press(Qt::Key_Tab);
    EXPECT_EQ(focus(), "generic_input_button_ok");
}

TEST_F(GenericInputDialogTest, KeepsItsTextsOutOfTheTabOrderWithoutAScreenReader) {
    make(1);
    for (const char* name : {"generic_input_header_label", "generic_input_instruction_label"}) {
        EXPECT_EQ(find<QLabel>(name)->focusPolicy(), Qt::NoFocus) << name;
    }
}

TEST_F(GenericInputDialogTest, IsDraggedByItsHeader) {
    make();
    show();
    const QPoint grip = find<QWidget>("generic_input_widget_header")->geometry().center();
    const QPoint global = dialog->mapToGlobal(grip);
    mouse(QEvent::MouseButtonPress, grip, global);
    EXPECT_EQ(static_cast<int>(dialog->cursor().shape()), 18);
    mouse(QEvent::MouseMove, grip, global + QPoint(30, -7));
    EXPECT_EQ(dialog->pos(), global + QPoint(30, -7) - grip);
    mouse(QEvent::MouseButtonRelease, grip, global);
    EXPECT_EQ(dialog->cursor().shape(), Qt::ArrowCursor);
    const QPoint place = dialog->pos();
    mouse(QEvent::MouseMove, grip, global + QPoint(100, 100));
    EXPECT_EQ(dialog->pos(), place) << "a move after the release";
}

TEST_F(GenericInputDialogTest, IsNotDraggedByItsMessage) {
    make();
    show();
    const QPoint place = dialog->pos();
    const QPoint grip = find<QWidget>("generic_input_widget_instruction")->geometry().center();
    mouse(QEvent::MouseButtonPress, grip, dialog->mapToGlobal(grip));
    mouse(QEvent::MouseMove, grip, dialog->mapToGlobal(grip) + QPoint(30, 30));
    EXPECT_EQ(dialog->pos(), place);
    EXPECT_EQ(dialog->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(GenericInputDialogTest, IsNotDraggedWhileTheCrossLiesUnderThePointer) {
    make();
    show();
    find("generic_input_header_close")->setAttribute(Qt::WA_UnderMouse);
    const QPoint place = dialog->pos();
    const QPoint grip = find<QWidget>("generic_input_widget_header")->geometry().center();
    mouse(QEvent::MouseButtonPress, grip, dialog->mapToGlobal(grip));
    mouse(QEvent::MouseMove, grip, dialog->mapToGlobal(grip) + QPoint(30, 30));
    EXPECT_EQ(dialog->pos(), place);
}

TEST_F(GenericInputDialogTest, IsAsHighAsItsMessageNeeds) {
    make();
    const int low = dialog->height();
    std::string text;
    for (int i = 0; i < 12; ++i) {
        text += "A message of many words takes many lines. ";
    }
    request.text = text;
    GenericInputDialog high(request, "A_CONTEXT");
    high.show();
    test::runEvents(std::chrono::milliseconds(1));
    EXPECT_GT(high.height(), low);
    EXPECT_EQ(high.width(), dialog->width());
    const auto* label = high.findChild<QLabel*>("generic_input_instruction_label");
    const QFontMetrics metrics(label->font());
    const int needed =
        metrics.boundingRect(QRect(0, 0, label->width() - 8, 10000), Qt::TextWordWrap, label->text())
            .height();
    EXPECT_GE(label->height(), needed);
    EXPECT_LE(label->height(), needed + 2 * metrics.lineSpacing());
}

TEST_F(GenericInputDialogTest, ScrollsAMessageThatIsHigherThanTheScreen) {
    request.type = 0;
    for (int i = 0; i < 500; ++i) {
        request.text += "A message of many words takes many lines. ";
    }
    dialog = std::make_unique<GenericInputDialog>(request, "A_CONTEXT");
    show();
    auto* scroll = find<QScrollArea>("generic_input_instruction_scroll");
    EXPECT_LE(dialog->height(), dialog->screen()->availableSize().height());
    EXPECT_EQ(scroll->focusPolicy(), Qt::StrongFocus) << "or its end could not be read by keyboard";
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focus(), "generic_input_instruction_scroll");
    press(Qt::Key_PageDown);
    EXPECT_GT(scroll->verticalScrollBar()->value(), 0);
    EXPECT_EQ(focus(), "generic_input_instruction_scroll") << "the key was the message's";
}

TEST_F(GenericInputDialogTest, BreaksAWordThatIsWiderThanTheBoxAndKeepsItsNameWhole) {
    const std::string path = "/" + std::string(300, 'w');
    request.text = path;
    dialog = std::make_unique<GenericInputDialog>(request, "A_CONTEXT");
    show();
    const auto* label = find<QLabel>("generic_input_instruction_label");
    const QFontMetrics metrics(label->font());
    EXPECT_LE(
        metrics.boundingRect(QRect(0, 0, label->width() - 8, 10000), Qt::TextWordWrap, label->text()).width(),
        label->width() - 8);
    EXPECT_EQ(label->accessibleName().toStdString(), path);
}

TEST_F(GenericInputDialogTest, ShowsATextAsItStandsWhateverItLooksLike) {
    request.text = "<b>5 < 6</b> & more";
    dialog = std::make_unique<GenericInputDialog>(request, "A_CONTEXT");
    EXPECT_EQ(find<QLabel>("generic_input_instruction_label")->textFormat(), Qt::PlainText);
    EXPECT_EQ(find<QLabel>("generic_input_instruction_label")->text(), "<b>5 < 6</b> & more");
}

TEST_F(GenericInputDialogTest, DoesWithoutAnyText) {
    request.type = 9;
    dialog = std::make_unique<GenericInputDialog>(request, "");
    show();
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_EQ(request.result, 0U);
}

} // namespace
} // namespace vexil::utils::accessibility
