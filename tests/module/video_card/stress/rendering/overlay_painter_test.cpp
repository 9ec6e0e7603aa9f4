#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/direct3d/mapped_subresource.h"
#include "module/video_card/stress/rendering/gui_application.h"
#include "module/video_card/stress/rendering/render_resources.h"
#include "platform/linux/overlay_painter/overlay_text_shaders.h"
#include "platform/overlay_painter.h"
#include "support/shader_folder.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

#include <algorithm>
#include <cstring>
#include <exception>
#include <optional>
#include <vector>

// Texts by Qt over textures of Direct3D, with no display.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using Picture = std::vector<std::uint32_t>;

constexpr std::uint32_t width = 200;
constexpr std::uint32_t height = 80;
constexpr std::uint32_t background = 0xFF204060; ///< alpha, red, green, blue
constexpr platform::OverlayFont font{L"Lato", 900, 5, 20};

TEST(OverlayShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(OverlayShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(OverlayShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"overlay_text.vs.dxbc", platform::shaders::overlayTextVertexShader},
                                     {"overlay_text.ps.dxbc", platform::shaders::overlayTextPixelShader}});
}

TEST(OverlayWithoutAnApplication, CannotBeMade) {
    ASSERT_EQ(qGuiApp, nullptr);
    EXPECT_THROW(static_cast<void>(platform::createOverlayPainter(nullptr, {})), std::exception);
}

struct Box {
    std::uint32_t left, top, right, bottom;
};

class OverlayPainterTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        startGuiApplication();
        contexts_ = createAllDx11Contexts();
    }
    static void TearDownTestSuite() { contexts_.clear(); }

    void SetUp() override {
        ASSERT_FALSE(contexts_.empty());
        const std::vector<std::uint32_t> pixels(width * height, background);
        const D3D11_SUBRESOURCE_DATA content{pixels.data(), width * 4, 0};
        const auto description = plainTexture(width, height, DXGI_FORMAT_B8G8R8A8_UNORM,
                                              D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE);
        for (auto& texture : textures_) {
            ASSERT_EQ(createTexture(device(), description, &content, texture), S_OK);
            ComShared<IDXGISurface> surface;
            ASSERT_EQ(createCom(surface,
                                [&](IDXGISurface** out) {
                                    return texture->QueryInterface(__uuidof(IDXGISurface),
                                                                   reinterpret_cast<void**>(out));
                                }),
                      S_OK);
            surfaces_.push_back(surface);
        }
        painter_ = platform::createOverlayPainter(contexts_.front().context, surfaces_);
    }

    static ID3D11Device& device() { return *contexts_.front().device; }
    static ID3D11DeviceContext& context() { return *contexts_.front().context; }

    std::shared_ptr<const platform::OverlayText> laidOut(const std::wstring& text,
                                                         const platform::OverlayFont& in = font) {
        return painter_->layOut(text, *painter_->createFormat(in), width, height);
    }

    Picture picture(std::size_t target) {
        ComShared<ID3D11Texture2D> staging;
        EXPECT_EQ(createTexture(device(), stagingDescription(*textures_[target]), nullptr, staging), S_OK);
        context().CopyResource(staging.get(), textures_[target].get());
        const auto mapped = mapSubresource(contexts_.front().context, staging, 0, D3D11_MAP_READ);
        Picture pixels(width * height);
        for (std::size_t row = 0; row < height; ++row) {
            std::memcpy(&pixels[row * width],
                        static_cast<const std::byte*>(mapped->pData) + row * mapped->RowPitch, width * 4);
        }
        return pixels;
    }

    /// Around all that differs from the background.
    static std::optional<Box> changed(const Picture& pixels) {
        std::optional<Box> box;
        for (std::uint32_t y = 0; y < height; ++y) {
            for (std::uint32_t x = 0; x < width; ++x) {
                if (pixels[y * width + x] != background) {
                    box = box.value_or(Box{x, y, x, y});
                    box = Box{std::min(box->left, x), std::min(box->top, y), std::max(box->right, x),
                              std::max(box->bottom, y)};
                }
            }
        }
        return box;
    }

    static inline std::vector<Dx11Context> contexts_;
    ComShared<ID3D11Texture2D> textures_[2];
    std::vector<std::shared_ptr<IDXGISurface>> surfaces_;
    std::unique_ptr<platform::OverlayPainter> painter_;
};

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

TEST_F(OverlayPainterTest, PaintsATextAgainOnlyWhenNobodyHoldsIt) {
    const auto first = laidOut(L"Press Esc");
    EXPECT_EQ(laidOut(L"Press Esc"), first);
    EXPECT_NE(laidOut(L"Press Esc", {L"Lato", 900, 5, 21}), first);
    EXPECT_NE(laidOut(L"Press F1"), first);
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
