#include "utils/interaction/input_request_closer.h"

#include "utils/interaction/gui_fixture.h"

namespace vexil::utils {
namespace {

using namespace std::chrono_literals;

class Closers : public tests::GuiFixture {};

TEST_F(Closers, EndADialogWith1AfterTheDelay) {
    InputRequestCloser closer;
    QDialog dialog;
    const auto start = std::chrono::steady_clock::now();
    closer.closeAfter(150ms, dialog);
    EXPECT_EQ(dialog.exec(), 1);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 140ms);
}

TEST_F(Closers, EndADialogWithAnotherCode) {
    InputRequestCloser closer;
    QDialog dialog;
    closer.closeAfter(20ms, dialog, 1);
    closer.closeAfter(40ms, dialog, 6);
    EXPECT_EQ(dialog.exec(), 6);
}

TEST_F(Closers, LeaveADialogAloneThatIsGone) {
    InputRequestCloser closer;
    auto dialog = std::make_unique<QDialog>();
    closer.closeAfter(20ms, *dialog);
    dialog.reset();
    QTimer::singleShot(80ms, [] { QCoreApplication::quit(); });
    EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(Closers, LetEveryEventOfADialogPass) {
    InputRequestCloser closer;
    QDialog dialog;
    dialog.installEventFilter(&closer);
    dialog.show();
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
}

} // namespace
} // namespace vexil::utils
