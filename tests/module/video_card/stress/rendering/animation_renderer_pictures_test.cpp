#include "window_under_test.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <string>

namespace vexil::tests {
namespace {

using Fault = simulated::Direct3DFault;
using Kind = Fault::Kind;

constexpr std::uint32_t extent = 64;

/// What the display shows of the window.
QImage shown(const WindowUnderTest& window) {
    QCoreApplication::processEvents();
    return QGuiApplication::primaryScreen()->grabWindow(window.window->winId()).toImage();
}

TEST(AnimationComparison, IsZeroOverAThousandFramesOfAHealthyCard) {
    WindowUnderTest window(extent, extent);
    window.createWholeRenderer();
    for (int frame = 0; frame < 1000; ++frame) {
        if (frame % 250 == 0) {
            window.renderer->updateOverlay({static_cast<float>(frame), true, 0, false, 0, false});
        }
        ASSERT_TRUE(window.renderer->render(static_cast<float>(frame) * 0.037F));
        const auto words = window.comparison();
        ASSERT_EQ(std::ranges::count(words, 0U), std::ssize(words)) << frame;
    }
}

TEST(AnimationComparison, HoldsTheBackBuffersColorWhereAPixelDiffers) {
    Fault fault{Kind::differingPixel, 1, "", 0, 0x80, 0, {}, {}};
    fault.picture = {2, 3, 40, 17};
    WindowUnderTest window(extent, extent, {fault});
    window.createWholeRenderer();
    ASSERT_TRUE(window.renderer->render(1.9F));
    EXPECT_EQ(std::ranges::count(window.comparison(), 0U), extent * extent) << "it is not time yet";
    ASSERT_TRUE(window.renderer->render(2.5F));
    const auto words = window.comparison();
    EXPECT_EQ(std::ranges::count(words, 0U), extent * extent - 1);
    const std::uint32_t differing = words[17 * extent + 40];
    const QImage picture = shown(window);
    EXPECT_EQ(differing & 0xFFFFFF, picture.pixel(40, 17) & 0xFFFFFFU)
        << "blue, green and red of the first picture";
    EXPECT_EQ(differing >> 24, 255U);
    ASSERT_TRUE(window.renderer->render(3.1F));
    EXPECT_EQ(std::ranges::count(window.comparison(), 0U), extent * extent)
        << "a difference that has passed is gone";
}

TEST(AnimationComparison, SeesADifferenceOfOneBit) {
    for (const std::uint8_t mask : {1, 2, 128}) {
        Fault fault{Kind::differingPixel, 1, "", 0, mask, 0, {}, {}};
        fault.picture.x = 63;
        WindowUnderTest window(extent, extent, {fault});
        window.createWholeRenderer();
        ASSERT_TRUE(window.renderer->render(0));
        EXPECT_NE(window.comparison()[63], 0U) << static_cast<int>(mask);
    }
}

TEST(AnimationPicture, IsShownInTheWindowAndChangesWithTime) {
    WindowUnderTest window(200, 150);
    window.createWholeRenderer();
    ASSERT_TRUE(window.renderer->render(0));
    const QImage first = shown(window);
    ASSERT_TRUE(window.renderer->render(0));
    EXPECT_EQ(shown(window), first) << "a function of the pixel and the time";
    ASSERT_TRUE(window.renderer->render(3));
    EXPECT_NE(shown(window), first);
    EXPECT_EQ(first.size(), QSize(200, 150));
}

TEST(AnimationPicture, HasTextFromTheFirstSampleOnAndNoInstructionInAWindow) {
    WindowUnderTest window(300, 200);
    window.createWholeRenderer();
    window.renderer->setFpsLabel(L"HHHH");
    ASSERT_TRUE(window.renderer->render(0));
    const QImage before = shown(window);
    window.renderer->updateOverlay({60, true, 0, false, 0, false});
    ASSERT_TRUE(window.renderer->render(0));
    const QImage windowed = shown(window);
    window.renderer->setFullScreen(true);
    ASSERT_TRUE(window.renderer->render(0));
    const QImage fullScreen = shown(window);
    const auto differ = [](const QImage& a, const QImage& b, const QRect& area) {
        return a.copy(area) != b.copy(area);
    };
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
