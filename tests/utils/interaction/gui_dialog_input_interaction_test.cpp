#include "utils/accessibility/generic_input_dialog.h"
#include "utils/interaction/gui_dialog_input_interaction.h"
#include "utils/interaction/input_request.h"

#include "utils/interaction/gui_fixture.h"

namespace vexil::utils {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

InputRequest question(std::uint32_t type = 0, std::uint32_t kind = 0) {
    InputRequest request;
    request.title = "TITLE";
    request.text = "TEXT";
    request.type = type;
    request.kind = kind;
    return request;
}

class DialogInteraction : public tests::GuiFixture {
protected:
    /// What `present` leaves in interaction and request.
    void present(InputRequest& request, bool suppressed = false, bool modal = true) {
        GuiDialogInputInteraction interaction("VIDEO_CARD", request, suppressed, modal);
        runWorker([&] { interaction.present(); });
        result_ = interaction.result();
    }

    std::uint32_t result_ = 0;
};

struct SilentCase {
    std::uint32_t type;
    std::uint32_t kind;
    bool suppressed;
    bool modal;
};

TEST(SilentQuestions, AnswerThemselvesWithoutADialog) {
    // No application is there: a dialog would leave the answer at 0.
    for (const auto& [type, kind, suppressed, modal] :
         {SilentCase{0, 1, false, false}, SilentCase{0, 1, true, true}, SilentCase{0, 2, false, false},
          SilentCase{0, 2, true, false}, SilentCase{1, 5, false, false}, SilentCase{1, 5, true, true}}) {
        auto request = question(type, kind);
        GuiDialogInputInteraction interaction("VIDEO_CARD", request, suppressed, modal);
        interaction.present();
        EXPECT_EQ(request.result, 1U) << type << ' ' << kind << ' ' << suppressed << ' ' << modal;
    }
}

TEST(SilentQuestions, AreNoOthers) {
    for (const auto& [type, kind, suppressed, modal] :
         {SilentCase{0, 1, false, true}, SilentCase{0, 2, false, true}, SilentCase{0, 2, true, true},
          SilentCase{1, 5, false, true}, SilentCase{0, 0, false, false}, SilentCase{1, 1, true, false},
          SilentCase{2, 5, true, false}, SilentCase{0, 5, true, false}}) {
        auto request = question(type, kind);
        GuiDialogInputInteraction interaction("VIDEO_CARD", request, suppressed, modal);
        interaction.present();
        EXPECT_EQ(request.result, 0U) << type << ' ' << kind << ' ' << suppressed << ' ' << modal;
    }
}

TEST(SuppressedQuestions, AreNotAsked) {
    auto request = question(0, 1);
    GuiDialogInputInteraction interaction("VIDEO_CARD", request, true, true);
    interaction.ask();
    EXPECT_EQ(request.result, 0U) << "not even answered by themselves";
    EXPECT_EQ(interaction.result(), 0U);
}

TEST_F(DialogInteraction, GivesTheAnswerToTheSleepingWorker) {
    const auto gui = std::this_thread::get_id();
    withOpenDialog([gui](QDialog& dialog) {
        EXPECT_EQ(std::this_thread::get_id(), gui);
        dynamic_cast<accessibility::GenericInputDialog&>(dialog).OnAnswer(3);
    });
    auto request = question(2);
    present(request);
    EXPECT_EQ(request.result, 4U);
    EXPECT_EQ(result_, 4U);
}

TEST_F(DialogInteraction, IsAskedUnlessItIsSuppressed) {
    withOpenDialog(
        [](QDialog& dialog) { dynamic_cast<accessibility::GenericInputDialog&>(dialog).OnAnswer(0); });
    auto request = question();
    GuiDialogInputInteraction interaction("VIDEO_CARD", request, false, true);
    runWorker([&] { interaction.ask(); });
    EXPECT_EQ(interaction.result(), 1U);
}

TEST_F(DialogInteraction, ShowsItsDialogOverTheActiveWindow) {
    QWidget window;
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    ASSERT_EQ(QApplication::activeWindow(), &window);
    QWidget* parent = nullptr;
    withOpenDialog([&parent](QDialog& dialog) {
        parent = dialog.parentWidget();
        dialog.close();
    });
    auto request = question();
    present(request);
    EXPECT_EQ(parent, &window);
}

TEST_F(DialogInteraction, PreparesItsDialogAndBringsItForwardWithALeftArrowKey) {
    withOpenDialog([](QDialog& dialog) { dialog.close(); });
    auto request = question();
    present(request);
    const auto& calls = environment_.fakeDesktop.calls;
    ASSERT_GE(calls.size(), 3U);
    EXPECT_EQ(std::vector(calls.begin(), calls.begin() + 3),
              (std::vector<std::string>{"press 37", "release 37", "forward"}));
    ASSERT_FALSE(environment_.fakeDesktop.polished.empty());
    EXPECT_TRUE(environment_.fakeDesktop.polished.front()) << "a window that comes forward has its look";
}

TEST_F(DialogInteraction, ClosesWithinASecondOfAStop) {
    tests::StoppableContext context;
    auto request = question();
    request.result = 7;
    request.context = &context;
    Clock::time_point stoppedAt;
    withOpenDialog([&](QDialog&) {
        if (!context.stopped) {
            stoppedAt = Clock::now();
            context.stopped = true;
        }
    });
    present(request);
    const auto late = Clock::now() - stoppedAt;
    EXPECT_TRUE(context.stopped);
    EXPECT_GT(late, 500ms) << "one look a second";
    EXPECT_LT(late, 1700ms) << "a second, and what a busy machine adds";
    EXPECT_EQ(request.result, 0U);
}

TEST_F(DialogInteraction, StaysOpenWithoutAStop) {
    const auto start = Clock::now();
    tests::StoppableContext context;
    withOpenDialog([&](QDialog& dialog) {
        if (Clock::now() - start > 1300ms) {
            dialog.close();
        }
    });
    auto request = question();
    request.context = &context;
    present(request);
    EXPECT_GT(Clock::now() - start, 1300ms);
}

TEST_F(DialogInteraction, EndsWhenItsParentClosesIt) {
    QWidget window;
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    withOpenDialog([&window](QDialog&) {
        for (auto* dialog : window.findChildren<QDialog*>()) {
            dialog->close();
        }
    });
    auto request = question();
    present(request);
    EXPECT_EQ(request.result, 0U);
}

TEST_F(DialogInteraction, EndsWhenItsParentIsDestroyed) {
    auto window = std::make_unique<QWidget>();
    window->show();
    window->activateWindow();
    QApplication::processEvents();
    withOpenDialog([&window](QDialog&) { window.reset(); });
    auto request = question();
    present(request);
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(request.result, 0U);
}

TEST_F(DialogInteraction, WakesItsWorkerWhenTheApplicationQuits) {
    withOpenDialog([](QDialog&) { QCoreApplication::quit(); });
    auto request = question();
    GuiDialogInputInteraction interaction("VIDEO_CARD", request, false, true);
    std::atomic<bool> awake = false;
    std::thread worker([&] {
        interaction.present();
        awake = true;
    });
    QApplication::exec();
    worker.join();
    EXPECT_TRUE(awake);
    EXPECT_EQ(request.result, 0U);
}

TEST_F(DialogInteraction, WakesAWorkerThatAsksAnApplicationWhichHasQuit) {
    auto request = question();
    GuiDialogInputInteraction interaction("VIDEO_CARD", request, false, true);
    std::atomic<bool> asks = false;
    std::thread worker([&] {
        asks = true;
        interaction.present();
    });
    while (!asks) {
        std::this_thread::yield();
    }
    // Time to fall asleep: no loop runs that would wake it.
    std::this_thread::sleep_for(200ms);
    watch_.stop();
    application_.reset();
    worker.join();
    EXPECT_EQ(request.result, 0U);
    EXPECT_EQ(interaction.result(), 0U);
}

TEST_F(DialogInteraction, AnswersTenWorkersThatAskAtOnce) {
    constexpr std::size_t workers = 10;
    std::array<InputRequest, workers> requests;
    std::vector<std::function<void()>> works;
    for (auto& request : requests) {
        request = question(2);
        works.emplace_back(
            [&request] { GuiDialogInputInteraction("VIDEO_CARD", request, false, true).ask(); });
    }
    withOpenDialog(
        [](QDialog& dialog) { dynamic_cast<accessibility::GenericInputDialog&>(dialog).OnAnswer(2); });
    runWorkers(works);
    for (const auto& request : requests) {
        EXPECT_EQ(request.result, 3U);
    }
}

TEST_F(DialogInteraction, StopsTenOpenDialogsAtOnce) {
    constexpr std::size_t workers = 10;
    tests::StoppableContext context;
    std::array<InputRequest, workers> requests;
    std::vector<std::function<void()>> works;
    for (auto& request : requests) {
        request = question(2);
        request.context = &context;
        works.emplace_back(
            [&request] { GuiDialogInputInteraction("VIDEO_CARD", request, false, true).ask(); });
    }
    QTimer::singleShot(500ms, [&context] { context.stopped = true; });
    const auto start = Clock::now();
    runWorkers(works);
    EXPECT_LT(Clock::now() - start, 5s);
}

} // namespace
} // namespace vexil::utils
