#include "module/video_card/direct3d/texture_pipeline/texture_pass.h"

#include "module/video_card/direct3d/mapped_subresource.h"
#include "module/video_card/direct3d/texture_pipeline/pattern_quad_shaders.h"
#include "module/video_card/direct3d/texture_pipeline/transposition.h"
#include "support/card_under_test.h"
#include "support/shader_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(PatternShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(PatternShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(PatternShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"pattern_quad.vs.dxbc", shaders::patternQuadVertexShader},
                                     {"pattern_quad.ps.dxbc", shaders::patternQuadPixelShader}});
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

class MappedSubresource : public testing::Test {
protected:
    MappedSubresource() : dx11_(card_.device->dx11Context()) {
        const D3D11_BUFFER_DESC description{16, D3D11_USAGE_STAGING, 0, D3D11_CPU_ACCESS_READ, 0, 0};
        ID3D11Buffer* buffer = nullptr;
        EXPECT_EQ(dx11_.device->CreateBuffer(&description, nullptr, &buffer), S_OK);
        buffer_ = shareCom(buffer);
        static_cast<void>(card_.log->take());
    }

    CardUnderTest card_;
    Dx11Context dx11_;
    ComShared<ID3D11Buffer> buffer_;
};

TEST_F(MappedSubresource, IsUnmappedByItsLastOwner) {
    auto mapped = mapSubresource(dx11_.context, buffer_, 0, D3D11_MAP_READ);
    EXPECT_NE(mapped->pData, nullptr);
    auto other = mapped;
    mapped.reset();
    EXPECT_THAT(card_.log->take(), ElementsAre("Map(buffer#1, 0, 1, 0)"));
    other.reset();
    EXPECT_THAT(card_.log->take(), ElementsAre("Unmap(buffer#1, 0)"));
}

TEST_F(MappedSubresource, KeepsContextAndResourceAlive) {
    auto mapped = mapSubresource(dx11_.context, buffer_, 0, D3D11_MAP_READ);
    const std::weak_ptr<ID3D11Buffer> buffer = buffer_;
    buffer_.reset();
    EXPECT_FALSE(buffer.expired());
    mapped.reset();
    EXPECT_TRUE(buffer.expired());
}

TEST(MappedSubresourceFailure, LeavesANullDataPointerAndIsNotUnmapped) {
    CardSetup setup;
    setup.direct3d.faults = {{simulated::Direct3DFault::Kind::failingCall, 1, "Map", 0, 0, 0x80004005, {}}};
    CardUnderTest card(setup);
    const auto dx11 = card.device->dx11Context();
    const D3D11_BUFFER_DESC description{16, D3D11_USAGE_STAGING, 0, D3D11_CPU_ACCESS_READ, 0, 0};
    ID3D11Buffer* buffer = nullptr;
    ASSERT_EQ(dx11.device->CreateBuffer(&description, nullptr, &buffer), S_OK);
    static_cast<void>(card.log->take());
    auto mapped = mapSubresource(dx11.context, shareCom(buffer), 0, D3D11_MAP_READ);
    ASSERT_TRUE(mapped);
    EXPECT_EQ(mapped->pData, nullptr);
    mapped.reset();
    EXPECT_THAT(card.log->take(), IsEmpty());
}

} // namespace
} // namespace vexil::tests
