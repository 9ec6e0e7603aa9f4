#include "window_under_test.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <thread>

// What a user sees. No other window may stand before these.
namespace vexil::tests {
namespace {

using Fault = simulated::Direct3DFault;

/// Out of the picture of the whole display: what a card draws into a window passes the window system by,
/// which may then not tell of the window alone.
QImage grabbed(const QWindow& window) {
    const auto place = window.geometry();
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
        .toImage();
}

/// What the display shows of the window at that time of the animation. The display takes its time: the
/// picture counts when it has stayed for a while.
QImage shown(const WindowUnderTest& window, float seconds) {
    QImage picture;
    for (int stayed = 0, attempt = 0; stayed < 4 && attempt < 100; ++attempt) {
        EXPECT_TRUE(window.renderer->render(seconds));
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        QCoreApplication::processEvents();
        const QImage now = grabbed(*window.window);
        stayed = now == picture ? stayed + 1 : 0;
        picture = now;
    }
    return picture;
}

TEST(AnimationPicture, HasTheColorThatTheComparisonHoldsWhereAPixelDiffers) {
    constexpr std::uint32_t extent = 64;
    Fault fault{Fault::Kind::differingPixel, 1, "", 0, 0x80, 0, {}, {}};
    fault.picture = {2, 3, 40, 17};
    WindowUnderTest window(extent, extent, {fault});
    window.createWholeRenderer();
    ASSERT_TRUE(window.renderer->render(1.9F));
    EXPECT_EQ(std::ranges::count(window.comparison(), 0U), extent * extent) << "it is not time yet";
    ASSERT_TRUE(window.renderer->render(2.5F));
    const auto words = window.comparison();
    EXPECT_EQ(std::ranges::count(words, 0U), extent * extent - 1);
    const std::uint32_t differing = words[17 * extent + 40];
    const QImage picture = shown(window, 2.5F);
    EXPECT_EQ(differing & 0xFFFFFF, picture.pixel(40, 17) & 0xFFFFFFU)
        << "blue, green and red of the first picture";
    EXPECT_EQ(differing >> 24, 255U);
    ASSERT_TRUE(window.renderer->render(3.1F));
    EXPECT_EQ(std::ranges::count(window.comparison(), 0U), extent * extent)
        << "a difference that has passed is gone";
}

TEST(AnimationPicture, IsShownInTheWindowAndChangesWithTime) {
    WindowUnderTest window(200, 150);
    window.createWholeRenderer();
    const QImage first = shown(window, 0);
    EXPECT_EQ(first.size(), QSize(200, 150));
    EXPECT_NE(shown(window, 3), first);
    EXPECT_EQ(shown(window, 0), first) << "a function of the pixel and the time";
}

bool differ(const QImage& a, const QImage& b, const QRect& area) { return a.copy(area) != b.copy(area); }

TEST(AnimationPicture, HasTextFromTheFirstSampleOnAndNoInstructionInAWindow) {
    WindowUnderTest window(300, 200);
    window.createWholeRenderer();
    window.renderer->setFpsLabel(L"HHHH");
    const QImage before = shown(window, 0);
    window.renderer->updateOverlay({60, true, 0, false, 0, false});
    const QImage windowed = shown(window, 0);
    window.renderer->setFullScreen(true);
    const QImage fullScreen = shown(window, 0);
    const QRect topLeft(0, 0, 100, 30);
    const QRect topRight(150, 0, 150, 30);
    EXPECT_TRUE(differ(before, windowed, topLeft));
    EXPECT_FALSE(differ(before, windowed, topRight));
    EXPECT_FALSE(differ(windowed, fullScreen, topLeft));
    EXPECT_TRUE(differ(windowed, fullScreen, topRight));
    const auto words = window.comparison();
    EXPECT_EQ(std::ranges::count(words, 0U), std::ssize(words)) << "the text stands on both pictures";
}

} // namespace
} // namespace vexil::tests
