#include "utils/interaction/input_dialog.h"

#include "utils/interaction/gui_fixture.h"

#include <QtGui/QShowEvent>

namespace vexil::utils {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

std::vector<std::string>* debugLines = nullptr;

class InputDialogs : public tests::GuiFixture {
protected:
    ~InputDialogs() override { debugLines = nullptr; }

    /// Calls `act` once the event loop of `exec` runs.
    static void later(std::chrono::milliseconds delay, const std::function<void()>& act) {
        QTimer::singleShot(delay, act);
    }
};

TEST_F(InputDialogs, StandAboveAllOthersAndAreModal) {
    InputDialog dialog;
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(dialog.windowType(), Qt::Window) << "the hint stands alone, without the type of a dialog";
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
    EXPECT_FALSE(dialog.testAttribute(Qt::WA_DeleteOnClose));
}

TEST_F(InputDialogs, ShowTheirFilterEveryEvent) {
    class Counting final : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override {
            shows += event->type() == QEvent::Show ? 1 : 0;
            return false;
        }
        int shows = 0;
    };
    Counting filter;
    InputDialog dialog(nullptr, &filter);
    dialog.show();
    EXPECT_EQ(filter.shows, 1);
}

TEST_F(InputDialogs, ReturnTheCodeThatTheyAreDoneWith) {
    InputDialog dialog;
    later(20ms, [&dialog] { dialog.done(4); });
    EXPECT_EQ(dialog.exec(), 4);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(InputDialogs, AreAcceptedAndRejectedWithTheResultThatTheyHave) {
    InputDialog dialog;
    dialog.setResult(3);
    later(20ms, [&dialog] { dialog.accept(); });
    EXPECT_EQ(dialog.exec(), 3);
    later(20ms, [&dialog] { dialog.reject(); });
    EXPECT_EQ(dialog.exec(), 3);
    later(20ms, [&dialog] { dialog.close(); });
    EXPECT_EQ(dialog.exec(), 3);
}

TEST_F(InputDialogs, EndWithinASecondOfAStopAndKeepTheirResult) {
    tests::StoppableContext context;
    InputDialog dialog;
    dialog.attach(&context);
    dialog.setResult(3);
    std::vector<int> finished;
    QObject::connect(&dialog, &QDialog::finished, &dialog, [&](int code) { finished.push_back(code); });
    Clock::time_point stoppedAt;
    later(100ms, [&] {
        stoppedAt = Clock::now();
        context.stopped = true;
    });
    EXPECT_EQ(dialog.exec(), 3);
    const auto late = Clock::now() - stoppedAt;
    EXPECT_GT(late, 500ms) << "one look a second";
    EXPECT_LT(late, 1700ms) << "a second, and what a busy machine adds";
    EXPECT_EQ(finished, std::vector<int>{0}) << "and were not done";
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(InputDialogs, GoOnWithoutAStop) {
    tests::StoppableContext context;
    InputDialog dialog;
    dialog.attach(&context);
    const auto start = Clock::now();
    later(1200ms, [&dialog] { dialog.done(1); });
    EXPECT_EQ(dialog.exec(), 1);
    EXPECT_GE(Clock::now() - start, 1190ms);
}

TEST_F(InputDialogs, SayThreeLinesToTheDebugLog) {
    std::vector<std::string> lines;
    debugLines = &lines;
    const auto before =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
            if (debugLines != nullptr && type == QtDebugMsg) {
                debugLines->push_back(text.toStdString());
            }
        });
    InputDialog dialog;
    dialog.setResult(3);
    later(20ms, [&dialog] { dialog.done(5); });
    static_cast<void>(dialog.exec());
    qInstallMessageHandler(before);
    EXPECT_EQ(lines,
              (std::vector<std::string>{"Before show:  3", "Before loop:  3", "After the event loop:  5"}));
}

TEST_F(InputDialogs, EndEvenIfTheyAreDoneWhileTheyAreShown) {
    class Impatient final : public InputDialog {
    protected:
        void showEvent(QShowEvent* event) override {
            InputDialog::showEvent(event);
            done(2);
        }
    };
    Impatient dialog;
    EXPECT_EQ(dialog.exec(), 2);
}

TEST_F(InputDialogs, EndWhenTheyAreDestroyed) {
    QPointer<InputDialog> dialog = new InputDialog;
    dialog->setResult(3);
    later(50ms, [&dialog] { delete dialog; });
    EXPECT_EQ(dialog->exec(), 0);
    EXPECT_TRUE(dialog.isNull());
}

TEST_F(InputDialogs, EndWhenTheApplicationQuitsEvenIfTheyAreOpenedThen) {
    std::vector<int> codes;
    later(0ms, [&codes] {
        InputDialog dialog;
        dialog.setResult(3);
        later(50ms, [&codes] {
            QCoreApplication::quit();
            InputDialog inner;
            inner.setResult(4);
            codes.push_back(inner.exec());
        });
        codes.push_back(dialog.exec());
    });
    QApplication::exec();
    EXPECT_EQ(codes, (std::vector<int>{4, 3}));
}

} // namespace
} // namespace vexil::utils
