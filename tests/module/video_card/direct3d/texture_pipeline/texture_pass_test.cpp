#include "module/video_card/direct3d/texture_pipeline/texture_pass.h"

#include "module/video_card/direct3d/texture_pipeline/pattern_quad_shaders.h"
#include "module/video_card/direct3d/texture_pipeline/transposition.h"
#include "support/card_under_test.h"
#include "support/shader_folder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vexil::tests {
namespace {

using namespace module::video_card;

TEST(PatternShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(PatternShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(PatternShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"pattern_quad.ps.dxbc", shaders::patternQuadPixelShader}});
}

class TexturePassTest : public testing::Test {
protected:
    TexturePassTest() : dx11_(card_.device->dx11Context()), blank_(patternPixels) {
        const D3D11_VIEWPORT viewport{0, 0, patternExtent, patternExtent, 0, 0};
        dx11_.context->RSSetViewports(1, &viewport);
        EXPECT_EQ(quad_.create(*dx11_.device), S_OK);
        static_cast<void>(card_.log->take());
    }

    CardUnderTest card_;
    Dx11Context dx11_;
    PatternQuad quad_;
    PatternImage blank_;
};

TEST_F(TexturePassTest, BringsEachPixelOfTheSourceToItsTransposedPlace) {
    PatternImage image(patternPixels);
    image[3 * 1024 + 7] = 0x11223344;
    TexturePass pass(dx11_, quad_);
    ASSERT_TRUE(pass.create(blank_, image));
    pass.draw();
    PatternImage picture;
    ASSERT_TRUE(pass.readBack(picture));
    ASSERT_EQ(picture.size(), patternPixels);
    EXPECT_EQ(picture[7 * 1024 + 3], 0x11223344U);
    EXPECT_EQ(std::ranges::count(picture, 0U), static_cast<std::ptrdiff_t>(patternPixels) - 1);
}

TEST_F(TexturePassTest, KeepsEveryBitOfARandomImage) {
    PatternImage image;
    fillPattern(123456, image);
    TexturePass pass(dx11_, quad_);
    ASSERT_TRUE(pass.create(blank_, image));
    pass.draw();
    PatternImage picture;
    ASSERT_TRUE(pass.readBack(picture));
    EXPECT_EQ(firstTranspositionError(PatternPixels(image), PatternPixels(picture)), std::nullopt);
}

TEST_F(TexturePassTest, NeedsAnImageOfTheTargetsExtent) {
    for (const auto pixels : {patternPixels - 1, patternPixels + 1, std::size_t{0}}) {
        const PatternImage image(pixels);
        TexturePass pass(dx11_, quad_);
        EXPECT_FALSE(pass.create(blank_, image)) << pixels;
    }
}

TEST_F(TexturePassTest, ReleasesAllThatItMade) {
    const auto used = card_.card->usedMemory.load();
    {
        TexturePass pass(dx11_, quad_);
        ASSERT_TRUE(pass.create(blank_, blank_));
        EXPECT_EQ(card_.card->usedMemory, used + 2 * patternPixels * 4);
    }
    dx11_.context->ClearState();
    dx11_.context->Flush();
    EXPECT_EQ(card_.card->usedMemory, used);
}

} // namespace
} // namespace vexil::tests
