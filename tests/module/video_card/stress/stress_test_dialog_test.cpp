#include "module/video_card/stress/stress_test_dialog.h"

#include "module/video_card/test_parameter_screen_dimensions.h"
#include "stress_test_under_test.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPixmap>
#include <QScreen>
#include <QTranslator>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <stdexcept>

// The window itself, as it is built.
namespace vexil::tests {
namespace {

using module::video_card::StressTestDialog;
using module::video_card::TestParameterScreenDimensions;
using testing::ElementsAre;

/// Says "<key>" in the place of a key of the module, and notes what it is asked for.
class MarkingTranslator final : public QTranslator {
public:
    mutable std::vector<std::string> asked; ///< "context: key"

    QString translate(const char* context, const char* key, const char*, int) const override {
        asked.push_back(std::string(context) + ": " + key);
        if (std::string_view(context) == "VIDEO_CARD") {
            return QString("<%1>").arg(key);
        }
        return {};
    }
    bool isEmpty() const override { return false; }
};

class StressWindow : public testing::Test {
protected:
    module::video_card::StressRun run() {
        return {services_, arguments_, card_.device, *lock_, statistics_, 20};
    }
    StressTestDialog& build() {
        dialog_.emplace(run(), module::video_card::LoadController(), nullptr, nullptr, dimensions_, 96.0F);
        return *dialog_;
    }
    void giveContext() { card_.device.setDirect3D({}); }

    FakeTimer timer_;
    WindowScript script_;
    module::video_card::StressServices services_{
        &timer_, {}, [this](const module::video_card::WindowSceneRequest& request) {
            script_.request = request;
            return script_.makesRenderer ? std::make_unique<FakeWindowScene>(script_) : nullptr;
        }};
    CardWithSensors card_;
    std::optional<module::video_card::Device::Direct3DLock> lock_;
    std::uint8_t cancel_ = 0;
    AskingReporter reporter_;
    core::TestRunArguments arguments_{{}, &cancel_, &reporter_, std::make_shared<core::SystemEventState>()};
    module::video_card::StressStatistics statistics_{arguments_};
    TestParameterScreenDimensions dimensions_{vexil::platform::DesktopRectangle{0, 0, 3840, 2160}};
    std::optional<StressTestDialog> dialog_;

    void SetUp() override {
        giveContext();
        lock_.emplace(card_.device.lock());
    }
    void TearDown() override { dialog_.reset(); }
};

struct SizeRow {
    const char* text;
    QRect geometry;
};

TEST_F(StressWindow, StandsAt50And50WithTheSizeOfTheParameter) {
    for (const auto& row :
         {SizeRow{"400x400", {50, 50, 400, 400}}, SizeRow{"1024x768", {50, 50, 1024, 768}},
          SizeRow{"1280x1024", {50, 50, 1280, 1024}}, SizeRow{"1920x1080", {50, 50, 1920, 1080}},
          SizeRow{"3840x2160", {50, 50, 3840, 2160}}}) {
        dimensions_.setValue(row.text);
        EXPECT_EQ(build().geometry(), row.geometry) << row.text;
        EXPECT_EQ(script_.request->width, static_cast<std::uint32_t>(row.geometry.width()));
        EXPECT_EQ(script_.request->height, static_cast<std::uint32_t>(row.geometry.height()));
    }
}

TEST_F(StressWindow, CoversTheFirstScreenInFullScreen) {
    dimensions_.setValue("FULL_SCREEN");
    EXPECT_EQ(build().geometry(), QGuiApplication::screens().first()->geometry());
    EXPECT_THAT(script_.calls, ElementsAre("scene", "comparison", "labels", "full screen"));
}

TEST_F(StressWindow, GivesItsNativeWindowAndItsScaleToTheRenderer) {
    auto& dialog = build();
    EXPECT_EQ(script_.request->window, dialog.winId()) << "the flags set later make no new window";
    EXPECT_EQ(script_.request->scale, 96.0F);
    EXPECT_THAT(script_.calls, ElementsAre("scene", "comparison", "labels", "window"));
}

TEST_F(StressWindow, IsWithoutFrameAboveAllAndLeftToTheCard) {
    const auto& dialog = build();
    constexpr int asked = 263427; // the window system's own hints come with them
    EXPECT_EQ(dialog.windowFlags().toInt() & asked, asked);
    EXPECT_EQ(dialog.windowType(), Qt::Dialog);
    EXPECT_TRUE(dialog.testAttribute(Qt::WA_PaintOnScreen));
    EXPECT_TRUE(dialog.testAttribute(Qt::WA_NoSystemBackground));
    EXPECT_TRUE(dialog.testAttribute(static_cast<Qt::WidgetAttribute>(121)));
    EXPECT_FALSE(dialog.testAttribute(Qt::WA_DeleteOnClose));
    EXPECT_TRUE(dialog.testAttribute(static_cast<Qt::WidgetAttribute>(120)));
    EXPECT_EQ(dialog.paintEngine(), nullptr);
    EXPECT_EQ(dialog.cursor().shape(), Qt::BlankCursor);
    EXPECT_EQ(dialog.focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(dialog.contextMenuPolicy(), Qt::NoContextMenu);
    EXPECT_TRUE(dialog.isModal());
    EXPECT_EQ(dialog.parent(), nullptr);
}

TEST_F(StressWindow, IsNamedAsTheFormNamesIt) {
    const auto& dialog = build();
    EXPECT_EQ(dialog.objectName(), "StressTestDialog");
    ASSERT_NE(dialog.layout(), nullptr);
    EXPECT_NE(qobject_cast<QHBoxLayout*>(dialog.layout()), nullptr);
    EXPECT_EQ(dialog.layout()->objectName(), "horizontalLayout");
}

TEST_F(StressWindow, BearsTheIconOfTheApplication) {
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    const auto before = QApplication::windowIcon();
    QApplication::setWindowIcon(picture);
    const auto& dialog = build();
    EXPECT_TRUE(dialog.testAttribute(Qt::WA_SetWindowIcon)) << "its own, not the one that every window has";
    EXPECT_EQ(dialog.windowIcon().cacheKey(), QApplication::windowIcon().cacheKey());
    QApplication::setWindowIcon(before);
}

TEST_F(StressWindow, BearsTheNameOfTheCard) {
    EXPECT_EQ(build().windowTitle().toStdString(), card_.device.displayName());
    EXPECT_NE(build().windowTitle(), "Form");
}

TEST_F(StressWindow, TranslatesTheLabelsOfTheOverlay) {
    MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    translator.asked.clear(); // Qt asks something of its own
    build();
    const auto asked = translator.asked;
    QCoreApplication::removeTranslator(&translator);
    EXPECT_EQ(script_.labels.fps, L"<GPU_STRESS_TEST_INFO_FPS>");
    EXPECT_EQ(script_.labels.usage, L"<GPU_STRESS_TEST_INFO_GPU_USAGE>");
    EXPECT_EQ(script_.labels.temperature, L"<GPU_STRESS_TEST_INFO_TEMPERATURE>");
    EXPECT_THAT(asked, ElementsAre("StressTestDialog: Form", "VIDEO_CARD: ESC_INSTRUCTION",
                                   "VIDEO_CARD: GPU_STRESS_TEST_INFO_FPS",
                                   "VIDEO_CARD: GPU_STRESS_TEST_INFO_GPU_USAGE",
                                   "VIDEO_CARD: GPU_STRESS_TEST_INFO_TEMPERATURE"));
}

TEST_F(StressWindow, PostsItselfTheEvent1000OnceItsNativeWindowIsThere) {
    class Listening final : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == static_cast<QEvent::Type>(1000) ? 1 : 0;
            return false;
        }
        int count = 0;
    };
    Listening filter;
    dialog_.emplace(run(), module::video_card::LoadController(), nullptr, &filter, dimensions_, 96.0F);
    EXPECT_EQ(filter.count, 0) << "it is posted, not sent";
    QCoreApplication::processEvents();
    EXPECT_EQ(filter.count, 1);
}

TEST_F(StressWindow, IsOnItsWayWithTheCode3) { EXPECT_EQ(build().result(), 3); }

TEST_F(StressWindow, IsNotBuiltWithoutADirect3DDevice) {
    lock_->slot().reset();
    EXPECT_THROW(build(), std::exception);
    EXPECT_FALSE(script_.request) << "no renderer was asked for";
}

TEST_F(StressWindow, IsNotBuiltWithoutRendererSceneOrComparison) {
    script_.makesRenderer = false;
    EXPECT_THROW(build(), std::exception);
    EXPECT_THAT(script_.calls, ElementsAre());
    script_.makesRenderer = true;
    script_.makesScene = false;
    EXPECT_THROW(build(), std::exception);
    EXPECT_THAT(script_.calls, ElementsAre("scene", "gone"));
    script_.calls.clear();
    script_.makesScene = true;
    script_.makesComparison = false;
    EXPECT_THROW(build(), std::exception);
    EXPECT_THAT(script_.calls, ElementsAre("scene", "comparison", "gone"));
}

TEST_F(StressWindow, KeepsItsCodeWhenItIsAcceptedOrRejected) {
    auto& dialog = build();
    dialog.accept();
    EXPECT_EQ(dialog.result(), 3);
    dialog.reject();
    EXPECT_EQ(dialog.result(), 3);
}

TEST_F(StressWindow, IsNotEndedByTheFirstSizeAtShow) {
    auto& dialog = build();
    dialog.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.result(), 3);
    EXPECT_TRUE(dialog.isVisible());
    dialog.resize(dialog.width() + 1, dialog.height());
    EXPECT_EQ(dialog.result(), 2);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(StressWindow, RendersNothingMoreWhenItIsGone) {
    build().show();
    QCoreApplication::processEvents();
    dialog_.reset();
    const auto rendered = script_.renderings.size();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(script_.renderings.size(), rendered);
    EXPECT_EQ(script_.calls.back(), "gone");
}

} // namespace
} // namespace vexil::tests
