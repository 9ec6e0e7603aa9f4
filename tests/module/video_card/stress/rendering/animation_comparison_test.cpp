#include "window_under_test.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vexil::tests {
namespace {

using Fault = simulated::Direct3DFault;
using Kind = Fault::Kind;

constexpr std::uint32_t extent = 64;

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

TEST(AnimationComparison, SeesADifferenceOfALaterPeriodOnly) {
    Fault fault{Kind::differingPixel, 1, "", 0, 0x80, 0, {}, {}};
    fault.picture.fromPeriod = 2;
    WindowUnderTest window(extent, extent, {fault});
    window.createWholeRenderer();
    ASSERT_TRUE(window.renderer->render(1));
    ASSERT_TRUE(window.renderer->render(2));
    EXPECT_EQ(std::ranges::count(window.comparison(), 0U), extent * extent);
    ASSERT_TRUE(window.renderer->render(0));
    EXPECT_EQ(std::ranges::count(window.comparison(), 0U), extent * extent - 1);
}

TEST(AnimationComparison, SeesADifferenceOfOneBit) {
    for (const std::uint8_t mask : {std::uint8_t{1}, std::uint8_t{2}, std::uint8_t{128}}) {
        Fault fault{Kind::differingPixel, 1, "", 0, mask, 0, {}, {}};
        fault.picture.x = 63;
        WindowUnderTest window(extent, extent, {fault});
        window.createWholeRenderer();
        ASSERT_TRUE(window.renderer->render(0));
        EXPECT_NE(window.comparison()[63], 0U) << static_cast<int>(mask);
    }
}

} // namespace
} // namespace vexil::tests
