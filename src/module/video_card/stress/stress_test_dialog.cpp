#include "module/video_card/stress/stress_test_dialog.h"

#include "core/message_keys.h"
#include "core/test_result.h"
#include "module/video_card/stress/stress_codes.h"
#include "module/video_card/test_parameter_screen_dimensions.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScreen>

#include <exception>
#include <string>

namespace vexil::module::video_card {

namespace {

/// Posted to itself, so that it comes when the window is shown and the loop runs.
constexpr auto shownEvent = static_cast<QEvent::Type>(1000);

constexpr int windowOffset = 50;
constexpr int renderInterval = 1; // as soon as the loop is free
constexpr int sampleInterval = 1000;

/// Without a frame: the window manager is bypassed where there is one to bypass.
constexpr Qt::WindowFlags stressWindowFlags =
    Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint | Qt::BypassWindowManagerHint | Qt::WindowStaysOnTopHint;
static_assert(stressWindowFlags.toInt() == 263427);

QRect geometryOf(const TestParameterScreenDimensions& dimensions) {
    return dimensions.isFullScreen()
               ? QGuiApplication::screens().first()->geometry()
               : QRect(windowOffset, windowOffset, dimensions.width(), dimensions.height());
}

std::wstring translate(const std::string& key) {
    return QCoreApplication::translate(keys::moduleName.c_str(), key.c_str()).toStdWString();
}

} // namespace

StressTestDialog::StressTestDialog(const StressRun& run, const LoadController& loadController,
                                   QWidget* parent, QObject* eventFilter,
                                   const TestParameterScreenDimensions& dimensions, float scale)
    : InputDialog(parent, eventFilter) {
    // The native window, which the swap chain needs, is there from now on. Were it made as one that is seen
    // through, as those of the other dialogs are, the card's pictures would not be seen.
    setAttribute(Qt::WA_TranslucentBackground, false);
    winId();
    QCoreApplication::postEvent(this, new QEvent(shownEvent));
    const auto geometry = geometryOf(dimensions);
    setUpUi();
    setGeometry(geometry);
    createScene(run, geometry, scale);
    translateLabels();
    scene_->setFullScreen(dimensions.isFullScreen());

    setWindowTitle(QString::fromStdString(run.device.displayName()));
    setFocusPolicy(Qt::NoFocus);
    setWindowFlags(stressWindowFlags);
    setGeometry(geometry); // which losing its frame has moved
    setAttribute(Qt::WA_AcceptTouchEvents);
    setCursor(Qt::BlankCursor);
    setWindowIcon(QApplication::windowIcon());
    startTimers(run, loadController);
    setAttribute(Qt::WA_PaintOnScreen);
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_TranslucentBackground);
    setResult(StressCode::Running);
}

StressTestDialog::~StressTestDialog() = default;

void StressTestDialog::setUpUi() {
    if (objectName().isEmpty()) {
        setObjectName("StressTestDialog");
    }
    resize(400, 300);
    setContextMenuPolicy(Qt::NoContextMenu);
    ui_.horizontalLayout = new QHBoxLayout(this);
    ui_.horizontalLayout->setObjectName("horizontalLayout");
    setWindowTitle(QCoreApplication::translate("StressTestDialog", "Form"));
    QMetaObject::connectSlotsByName(this);
}

void StressTestDialog::createScene(const StressRun& run, const QRect& geometry, float scale) {
    if (!run.lock.slot()) {
        setResult(core::TestResult::NotSupported);
        throw std::exception();
    }
    scene_ = run.services.createWindowScene({*run.lock.slot(), winId(),
                                             static_cast<std::uint32_t>(geometry.width()),
                                             static_cast<std::uint32_t>(geometry.height()), scale});
    if (!scene_ || !scene_->createScene() || !scene_->createComparison()) {
        setResult(core::TestResult::NotCompleted);
        throw std::exception();
    }
}

void StressTestDialog::translateLabels() {
    // Asked for with the others; the overlay asks for it again where it is shown.
    [[maybe_unused]] const auto instruction = translate(keys::escInstruction);
    scene_->setLabels({translate(keys::stressInfoFps), translate(keys::stressInfoGpuUsage),
                       translate(keys::stressInfoTemperature)});
}

void StressTestDialog::startTimers(const StressRun& run, const LoadController& loadController) {
    run_ = std::make_unique<WindowRun>(run, loadController, *scene_,
                                       WindowRun::Window{[this] { return clock_.elapsed(); },
                                                         [this] { clock_.restart(); },
                                                         [this](int code) { done(code); }});
    connect(&renderTimer_, &QTimer::timeout, this, [this] { run_->onRenderTick(); });
    renderTimer_.start(renderInterval);
    clock_.start();
    connect(&sampleTimer_, &QTimer::timeout, this, [this] { run_->onSampleTick(); });
    // Qt's usual timers may fire early: the last sample would find the time not up, and cost a second more.
    sampleTimer_.setTimerType(Qt::PreciseTimer);
    sampleTimer_.start(sampleInterval);
}

void StressTestDialog::resizeEvent(QResizeEvent* event) {
    // The first one, at show, has no old size.
    if (event->oldSize().width() != -1) {
        done(StressCode::Resized);
        QDialog::resizeEvent(event);
    }
}

void StressTestDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        done(StressCode::Left);
    }
}

void StressTestDialog::closeEvent(QCloseEvent*) { done(StressCode::Left); }

void StressTestDialog::customEvent(QEvent* event) {
    if (event->type() == shownEvent) {
        // No window manager gives the keyboard to a window that bypasses it, and Escape must arrive.
        raise();
        activateWindow();
    }
}

} // namespace vexil::module::video_card
