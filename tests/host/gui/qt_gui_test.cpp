#include "host/gui/make_gui.h"

#include "host/asking_module/asking_module.h"
#include "host/core/plan_execution.h"
#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "support/time_bound.h"
#include "utils/interaction/gui_thread.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>

#include <gtest/gtest.h>

#include <clocale>
#include <stdexcept>
#include <thread>

namespace vexil::host {
namespace {

using tests::AskingModule;

class SilentObserver final : public RunObserver {
public:
    void runStarted(std::size_t, const core::TestDescriptor&) override {}
    void runProgress(std::uint8_t, std::chrono::duration<double>) override {}
    void runFinished(const TestRun&) override {}
};

class QtGuis : public ::testing::Test {
protected:
    QtGuis() { language_.add(pathFromUtf8(VEXIL_SOURCE_DIR "/host/languages/en.json"), false); }

    void run(const Gui::Work& work) { gui_->run(false, language_, "VIDEO_CARD", work); }

    vexil::tests::TimeBound bound_{std::chrono::seconds(30)};
    Language language_;
    std::unique_ptr<Gui> gui_ = makeGui();
};

TEST_F(QtGuis, RunTheWorkBesideTheCallingThreadWhichBecomesTheGuis) {
    const auto caller = std::this_thread::get_id();
    std::thread::id worker;
    std::thread::id gui;
    run([&](GuiSession&) {
        worker = std::this_thread::get_id();
        utils::runOnGuiThread([&gui] { gui = std::this_thread::get_id(); });
    });
    EXPECT_NE(worker, caller);
    EXPECT_EQ(gui, caller);
}

TEST_F(QtGuis, LeaveNoApplicationBehindAndCanBeLentAgain) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(QCoreApplication::instance(), nullptr);
        run([](GuiSession&) { EXPECT_NE(QCoreApplication::instance(), nullptr); });
    }
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(QtGuis, ThrowWhatTheWorkThrows) {
    EXPECT_THROW(run([](GuiSession&) { throw std::runtime_error("work"); }), std::runtime_error);
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
}

TEST_F(QtGuis, NeedNoDisplayWhereNothingIsToBeSeen) {
    run([](GuiSession&) {
#ifndef _WIN32
        EXPECT_EQ(QGuiApplication::platformName(), "offscreen");
#endif
    });
}

TEST_F(QtGuis, GoOnUntilTheWorkEndsEvenIfTheApplicationIsAskedToQuit) {
    bool answered = false;
    run([&](GuiSession&) {
        utils::runOnGuiThread([] { QCoreApplication::quit(); });
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        utils::runOnGuiThread([&answered] { answered = true; });
    });
    EXPECT_TRUE(answered);
}

TEST_F(QtGuis, KeepOneWindowOfTheHostsNameHiddenUntilATestNeedsIt) {
    run([](GuiSession& session) {
        session.showTest("Some test");
        utils::runOnGuiThread([] {
            int windows = 0;
            for (QWidget* widget : QApplication::allWidgets()) {
                if (widget->accessibleName() != "Default - Window") {
                    continue;
                }
                ++windows;
                EXPECT_FALSE(widget->isVisible());
                EXPECT_EQ(widget->windowTitle(), "Norvane Diagnostics");
                EXPECT_EQ(widget->findChild<QLabel*>()->text(), "Some test");
            }
            EXPECT_EQ(windows, 1);
        });
    });
}

TEST_F(QtGuis, AnswerTheModulesKeysInTheHostsLanguage) {
    run([](GuiSession&) {
        utils::runOnGuiThread(
            [] { EXPECT_EQ(QCoreApplication::translate("VIDEO_CARD", "CANCEL"), "Cancel"); });
    });
}

TEST_F(QtGuis, KnowThatNobodySeesAnOffscreenWindow) {
    platform::setEnvironmentVariable("QT_QPA_PLATFORM", "offscreen");
    EXPECT_FALSE(gui_->hasDisplay());
    platform::setEnvironmentVariable("QT_QPA_PLATFORM", "");
}

TEST_F(QtGuis, LetATestOfAModuleShowItsWidgetOnTheGuiThread) {
    const AskingModule module;
    const auto cards = scanCards(const_cast<AskingModule&>(module));
    auto plan = planRuns(module, cards, {"0100", "1,21", {}}, language_);
    volatile std::uint8_t cancel = 0;
    SilentObserver observer;
    PlanOutcome outcome;
    run([&](GuiSession&) {
        TestRunner runner(module.dispatcher(),
                          {&cancel, nullptr, [](core::InputInteraction& question) { question.ask(); }});
        outcome = executePlan(plan, cards, runner, false, cancel, observer);
    });
    ASSERT_EQ(outcome.runs.size(), 2U);
    const auto& shown = outcome.runs[1];
    EXPECT_EQ(shown.result, core::TestResult::Passed);
    ASSERT_EQ(shown.messages.size(), 6U) << "two slices with three lines";
    EXPECT_EQ(shown.messages[0].key, "THREAD: gui");
    EXPECT_EQ(shown.messages[1].key, "PARENT: Default - Window");
    EXPECT_EQ(shown.messages[2].key, "TITLE: Cancel");
}

} // namespace
} // namespace vexil::host
