#include "painted_overlay.h"

namespace vexil::tests {
namespace {

TEST_F(OverlayPainterTest, PaintsWhiteLettersAtTheirPlace) {
    const auto text = laidOut(L"HH");
    painter_->begin(0);
    painter_->draw(0, 50, 30, *text);
    EXPECT_EQ(painter_->end(0), S_OK);
    const auto pixels = picture(0);
    const auto box = changed(pixels);
    ASSERT_TRUE(box);
    EXPECT_GE(box->left, 50U);
    EXPECT_LE(box->left, 54U);
    EXPECT_GE(box->top, 30U);
    EXPECT_LE(box->top, 40U);
    // Capital letters of a font of 20 pixels are about 14 high.
    EXPECT_NEAR(box->bottom - box->top + 1, 14, 2);
    EXPECT_GT(std::ranges::count(pixels, 0xFFFFFFFF), 40) << "the strokes are wide enough to be opaque";
}

TEST_F(OverlayPainterTest, PaintsTheSameOnBothTargets) {
    const auto text = laidOut(L"Frames per second: 57\nTemperature: 48\u00B0C\n");
    for (std::size_t target = 0; target < painter_->targetCount(); ++target) {
        painter_->begin(target);
        painter_->draw(target, 1, 1, *text);
        painter_->draw(target, 120, 0, *text, {0.6313F, 0.6313F, 0.6313F, 1});
        EXPECT_EQ(painter_->end(target), S_OK);
    }
    EXPECT_TRUE(changed(picture(0)));
    EXPECT_EQ(picture(0), picture(1));
}

TEST_F(OverlayPainterTest, BlendsInTheColorOfTheBrush) {
    const auto text = laidOut(L"HHH");
    painter_->begin(1);
    painter_->draw(1, 0, 0, *text, {0.6313F, 0.6313F, 0.6313F, 1});
    EXPECT_EQ(painter_->end(1), S_OK);
    const auto pixels = picture(1);
    EXPECT_GT(std::ranges::count(pixels, 0xFFA1A1A1), 40);
    EXPECT_EQ(std::ranges::count(pixels, 0xFFFFFFFF), 0);
    EXPECT_FALSE(changed(picture(0))) << "the other target is left alone";
}

TEST_F(OverlayPainterTest, BreaksLinesAtLineEnds) {
    const auto one = laidOut(L"H");
    const auto two = laidOut(L"H\nH");
    painter_->begin(0);
    painter_->draw(0, 0, 0, *one);
    EXPECT_EQ(painter_->end(0), S_OK);
    painter_->begin(1);
    painter_->draw(1, 0, 0, *two);
    EXPECT_EQ(painter_->end(1), S_OK);
    const auto first = changed(picture(0));
    const auto both = changed(picture(1));
    ASSERT_TRUE(first && both);
    EXPECT_EQ(first->right, both->right);
    EXPECT_NEAR(both->bottom - first->bottom, 24, 3)
        << "the lines of Lato are 1.2 times as far apart as its size";
}

TEST_F(OverlayPainterTest, DrawsNothingOfAnEmptyText) {
    const auto text = laidOut(L"");
    ASSERT_TRUE(text);
    painter_->begin(0);
    painter_->draw(0, 1, 1, *text);
    EXPECT_EQ(painter_->end(0), S_OK);
    EXPECT_FALSE(changed(picture(0)));
}

TEST_F(OverlayPainterTest, CutsOffWhatLiesBeyondTheTarget) {
    const auto text = laidOut(L"HHHH");
    painter_->begin(0);
    painter_->draw(0, static_cast<float>(width) - 20, 0, *text);
    EXPECT_EQ(painter_->end(0), S_OK);
    const auto box = changed(picture(0));
    ASSERT_TRUE(box);
    EXPECT_EQ(box->right, width - 1);
}

TEST_F(OverlayPainterTest, RefusesAFormatWithoutASize) {
    EXPECT_EQ(painter_->createFormat({L"Lato", 900, 5, 0}), nullptr);
    EXPECT_EQ(painter_->createFormat({L"Lato", 900, 5, -3}), nullptr);
}

TEST_F(OverlayPainterTest, LeavesWhatTheRendererHasBound) {
    ComShared<ID3D11RenderTargetView> target;
    ComShared<ID3D11ShaderResourceView> resource;
    ASSERT_EQ(createTargetView(device(), *textures_[0], target), S_OK);
    ASSERT_EQ(createResourceView(device(), *textures_[1], 1, resource), S_OK);
    auto* const boundTarget = target.get();
    auto* const boundResource = resource.get();
    context().OMSetRenderTargets(1, &boundTarget, nullptr);
    context().PSSetShaderResources(0, 1, &boundResource);
    context().IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_LINELIST);
    setWholeViewport(context(), 11, 22);

    const auto text = laidOut(L"H");
    painter_->begin(0);
    painter_->draw(0, 1, 1, *text);
    EXPECT_EQ(painter_->end(0), S_OK);

    ID3D11RenderTargetView* targetAfter = nullptr;
    context().OMGetRenderTargets(1, &targetAfter, nullptr);
    EXPECT_EQ(shareCom(targetAfter).get(), target.get());
    ID3D11ShaderResourceView* resourceAfter = nullptr;
    context().PSGetShaderResources(0, 1, &resourceAfter);
    EXPECT_EQ(shareCom(resourceAfter).get(), resource.get());
    D3D11_PRIMITIVE_TOPOLOGY topology{};
    context().IAGetPrimitiveTopology(&topology);
    EXPECT_EQ(topology, D3D11_PRIMITIVE_TOPOLOGY_LINELIST);
    UINT viewports = 1;
    D3D11_VIEWPORT viewport{};
    context().RSGetViewports(&viewports, &viewport);
    EXPECT_EQ(viewport.Width, 11);
    EXPECT_EQ(viewport.Height, 22);
    context().ClearState();
}

} // namespace
} // namespace vexil::tests
