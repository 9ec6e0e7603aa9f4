#include "utils/interaction/gui_custom_input_interaction.h"
#include "utils/interaction/gui_dialog_input_interaction.h"
#include "utils/interaction/request_input.h"

#include "support/key_translator.h"
#include "utils/interaction/gui_fixture.h"

#include <QtWidgets/QPushButton>

namespace vexil::utils {
namespace {

class AnsweringWidget final : public AbstractWidgetWrapper {
public:
    std::uint32_t showWidget(QWidget*, InputRequestCloser*, std::int32_t) override { return 4; }
};

/// A host that deals with a question as the test says.
class Host final : public core::TestReporter {
public:
    using Deal = std::function<void(std::unique_ptr<core::InputInteraction>&)>;
    explicit Host(Deal deal) : deal_(std::move(deal)) {}
    void setProgress(std::uint8_t) override {}
    void report(const core::TestMessage&) override {}
    void interact(std::unique_ptr<core::InputInteraction>& interaction) override { deal_(interaction); }

private:
    Deal deal_;
};

class InputRequests : public tests::GuiFixture {
protected:
    std::uint32_t request(std::uint32_t type, AbstractWidgetWrapper* widget, const Host::Deal& deal) {
        InputRequest question;
        question.type = type;
        question.widget = widget;
        question.result = 9;
        Host host(deal);
        runWorker([&] { requestInput(question, host); });
        return question.result;
    }

    AnsweringWidget widget_;
};

TEST_F(InputRequests, OfAWidgetBringItsAnswer) {
    EXPECT_EQ(request(3, &widget_, [](auto& interaction) { interaction->ask(); }), 4U);
}

TEST_F(InputRequests, AreAWidgetsWithAWidgetAndItsTypeOnly) {
    const auto dialogIsMade = [](std::unique_ptr<core::InputInteraction>& interaction) {
        EXPECT_NE(dynamic_cast<GuiDialogInputInteraction*>(interaction.get()), nullptr);
    };
    const auto widgetIsShown = [](std::unique_ptr<core::InputInteraction>& interaction) {
        EXPECT_NE(dynamic_cast<GuiCustomInputInteraction*>(interaction.get()), nullptr);
    };
    request(3, &widget_, widgetIsShown);
    request(3, nullptr, dialogIsMade);
    request(0, &widget_, dialogIsMade);
    request(2, nullptr, dialogIsMade);
}

TEST_F(InputRequests, WithTextsBringTheDialogsAnswer) {
    withOpenDialog([](QDialog& dialog) { dialog.close(); });
    EXPECT_EQ(request(0, nullptr, [](auto& interaction) { interaction->ask(); }), 0U);
}

TEST_F(InputRequests, WithTextsAreTranslatedInTheModulesContext) {
    const test::KeyTranslator texts("VIDEO_CARD", {{"OK", "Okay"}});
    QString text;
    withOpenDialog([&text](QDialog& dialog) {
        text = dialog.findChild<QPushButton*>("generic_input_button_ok")->text();
        dialog.close();
    });
    request(0, nullptr, [](auto& interaction) { interaction->ask(); });
    EXPECT_EQ(text, "Okay");
}

TEST_F(InputRequests, WithTextsAreShownWhereASilentQuestionWouldAnswerItself) {
    withOpenDialog([](QDialog& dialog) { dialog.close(); });
    InputRequest question;
    question.kind = 1;
    question.result = 9;
    Host host([](auto& interaction) { interaction->ask(); });
    runWorker([&] { requestInput(question, host); });
    EXPECT_EQ(question.result, 0U) << "of the dialog that was closed; 1 without one";
}

TEST_F(InputRequests, ThatNobodyAsksStayUnanswered) {
    EXPECT_EQ(request(3, &widget_, [](auto&) {}), 0U) << "a widget's";
    EXPECT_EQ(request(0, nullptr, [](auto&) {}), 9U) << "a dialog's is left as it was";
}

TEST_F(InputRequests, BringTheAnswerOfAQuestionThatTheHostHasTaken) {
    std::unique_ptr<core::InputInteraction> kept;
    EXPECT_EQ(request(3, &widget_,
                      [&kept](auto& interaction) {
                          interaction->ask();
                          kept = std::move(interaction);
                      }),
              4U);
    EXPECT_NE(kept, nullptr);
    EXPECT_EQ(request(3, &widget_,
                      [](auto& interaction) {
                          const auto destroyed = std::move(interaction);
                          destroyed->ask();
                      }),
              4U);
}

} // namespace
} // namespace vexil::utils
