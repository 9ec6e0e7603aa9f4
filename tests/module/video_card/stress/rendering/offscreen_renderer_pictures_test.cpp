#include "module/video_card/stress/rendering/d3d11_offscreen_renderer.h"
#include "module/video_card/stress/rendering/sphere_objects.h"
#include "support/card_under_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <set>
#include <vector>

namespace vexil::tests {
namespace {

using namespace module::video_card;
using Picture = std::vector<std::uint32_t>;

constexpr std::uint32_t width = 64;
constexpr std::uint32_t height = 48;

Picture newest(D3D11OffscreenRenderer& renderer) {
    ImageReadBack image;
    EXPECT_TRUE(renderer.readBack(image));
    Picture picture(width * height);
    for (std::size_t row = 0; row < height; ++row) {
        std::memcpy(&picture[row * width],
                    static_cast<const std::byte*>(image.data->pData) + row * image.data->RowPitch, width * 4);
    }
    return picture;
}

std::set<std::uint32_t> patternColors() {
    std::mt19937 engine(0x600DCAFE);
    std::set<std::uint32_t> colors;
    for (std::uint32_t i = 0; i < width * height; ++i) {
        colors.insert(static_cast<std::uint32_t>(engine()) | 0xFF);
    }
    return colors;
}

class OffscreenPictures : public testing::Test {
protected:
    std::shared_ptr<D3D11OffscreenRenderer> renderer(bool wireframe) {
        auto made = createOffscreenRenderer(dx11_, width, height, wireframe);
        made->setObjects(createSphereObjects(20, dx11_).value);
        return made;
    }

    CardUnderTest card_;
    Dx11Context dx11_ = card_.device->dx11Context();
};

TEST_F(OffscreenPictures, ShowEachCoveredPixelOfTheFirstFrameInAColorOfThePattern) {
    const auto filled = renderer(false);
    ASSERT_TRUE(filled->renderFrame());
    const auto colors = patternColors();
    std::set<std::uint32_t> seen;
    std::size_t covered = 0;
    for (const auto pixel : newest(*filled)) {
        if (pixel != 0) {
            EXPECT_TRUE(colors.contains(pixel)) << std::hex << pixel;
            seen.insert(pixel);
            ++covered;
        }
    }
    EXPECT_GT(covered, width * height / 4U);
    EXPECT_GT(seen.size(), 20U) << "the place decides on the colour";
}

TEST_F(OffscreenPictures, AreEmptyWhereTheFrameBeforeWasTheSame) {
    const auto filled = renderer(false);
    ASSERT_TRUE(filled->renderFrame());
    ASSERT_TRUE(filled->renderFrame());
    const auto second = newest(*filled);
    EXPECT_EQ(std::ranges::count(second, 0U), std::ssize(second));
    ASSERT_TRUE(filled->renderFrame());
    const auto third = newest(*filled);
    EXPECT_LT(std::ranges::count(third, 0U), std::ssize(third)) << "compared with the empty one";
}

TEST_F(OffscreenPictures, GiveAPixelTheSameColorWhateverTheTime) {
    const auto filled = renderer(false);
    ASSERT_TRUE(filled->renderFrame());
    const auto first = newest(*filled);
    const auto later = renderer(false);
    for (int i = 0; i < 7; ++i) {
        later->advanceTime();
    }
    ASSERT_TRUE(later->renderFrame());
    const auto turned = newest(*later);
    std::size_t both = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (first[i] != 0 && turned[i] != 0) {
            EXPECT_EQ(first[i], turned[i]);
            ++both;
        }
    }
    EXPECT_GT(both, first.size() / 8);
}

TEST_F(OffscreenPictures, OfTheWireframeCoverLessAndTurnWithTime) {
    const auto filled = renderer(false);
    ASSERT_TRUE(filled->renderFrame());
    const auto solid = newest(*filled);
    const auto wires = renderer(true);
    ASSERT_TRUE(wires->renderFrame());
    const auto first = newest(*wires);
    EXPECT_GT(std::ranges::count(first, 0U), std::ranges::count(solid, 0U));
    EXPECT_LT(std::ranges::count(first, 0U), std::ssize(first));
    const auto turned = renderer(true);
    turned->advanceTime();
    ASSERT_TRUE(turned->renderFrame());
    EXPECT_NE(newest(*turned), first);
}

TEST_F(OffscreenPictures, OfTwoRunsAreBitIdenticalOverAThousandFrames) {
    std::vector<Picture> pictures;
    for (int run = 0; run < 2; ++run) {
        const auto wires = renderer(true);
        for (std::size_t frame = 0; frame < 1000; ++frame) {
            // As in a run of the test: two frames at each time.
            if (frame % 2 == 0) {
                wires->advanceTime();
            }
            ASSERT_TRUE(wires->renderFrame());
            auto picture = newest(*wires);
            if (run == 0) {
                pictures.push_back(std::move(picture));
            } else {
                ASSERT_EQ(picture, pictures[frame]) << frame;
            }
        }
    }
    EXPECT_EQ(pictures.size(), 1000U);
}

} // namespace
} // namespace vexil::tests
