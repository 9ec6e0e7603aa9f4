#pragma once

#include "module/video_card/stress/window_run.h"
#include "utils/interaction/input_dialog.h"

#include <QElapsedTimer>
#include <QRect>
#include <QTimer>

#include <memory>

class QHBoxLayout;

namespace vexil::module::video_card {

class TestParameterScreenDimensions;

/// The window in which the stress test is seen: without a frame, on top of all others, its whole area drawn
/// by the card. Made, shown by `exec` and destroyed on the GUI thread; its result is a `StressCode`.
class StressTestDialog : public utils::InputDialog {
    Q_OBJECT

public:
    /// `scale` is that of the overlay's text. Throws `std::exception` if the window cannot be built; the
    /// result set before is lost with the object.
    StressTestDialog(const StressRun& run, const LoadController& loadController, QWidget* parent,
                     QObject* eventFilter, const TestParameterScreenDimensions& dimensions, float scale);
    ~StressTestDialog() override;

    /// None: the card alone draws here.
    [[nodiscard]] QPaintEngine* paintEngine() const override { return nullptr; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void customEvent(QEvent* event) override;

private:
    /// As the form editor names it.
    struct Ui {
        QHBoxLayout* horizontalLayout;
    };

    void setUpUi();
    void createScene(const StressRun& run, const QRect& geometry, float scale);
    void translateLabels();
    void startTimers(const StressRun& run, const LoadController& loadController);

    Ui ui_{};
    std::unique_ptr<WindowScene> scene_;
    std::unique_ptr<WindowRun> run_;
    QTimer renderTimer_;
    QTimer sampleTimer_;
    QElapsedTimer clock_;
};

} // namespace vexil::module::video_card
