#include "module/video_card/stress/rendering/quad_objects.h"
#include "window_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::Contains;
using testing::Not;
using Fault = simulated::Direct3DFault;
using Kind = Fault::Kind;

Fault failing(const char* call, std::uint32_t number) {
    return {Kind::failingCall, number, call, 0, 0, 0x80004005, {}, {}};
}

Fault lost(const char* call, std::uint32_t number) { return {Kind::lostCall, number, call, 0, 0, 0, {}, {}}; }

TEST(AnimationRendererCreation, WithoutASwapChainSaysSo) {
    WindowUnderTest window(64, 64, {failing("CreateSwapChain", 1)});
    try {
        window.createRenderer();
        FAIL() << "it was made";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Failed to create swap chain!");
    }
}

class AnimationRendererCreation : public testing::TestWithParam<std::pair<const char*, std::uint32_t>> {};

INSTANTIATE_TEST_SUITE_P(
    Each, AnimationRendererCreation,
    testing::Values(std::pair("CreateRenderTargetView", 1U), std::pair("CreateRenderTargetView", 2U),
                    std::pair("CreateRenderTargetView", 3U), std::pair("CreateShaderResourceView", 1U),
                    std::pair("CreateShaderResourceView", 2U), std::pair("CreateTexture2D", 1U),
                    std::pair("CreateTexture2D", 2U), std::pair("CreateTexture2D", 3U),
                    std::pair("CreateTexture2D", 4U), std::pair("CreateDepthStencilState", 1U),
                    std::pair("CreateDepthStencilView", 1U), std::pair("CreateRasterizerState", 1U),
                    std::pair("CreateBuffer", 1U), std::pair("CreateBuffer", 2U)),
    [](const auto& row) { return row.param.first + std::to_string(row.param.second); });

TEST_P(AnimationRendererCreation, ThatFailsThrows) {
    WindowUnderTest window(64, 64, {failing(GetParam().first, GetParam().second)});
    EXPECT_THROW(window.createRenderer(), std::exception);
}

TEST(AnimationFrame, OfARemovedDeviceIsNotShown) {
    for (const std::uint32_t drawing : {4U, 5U, 6U}) {
        WindowUnderTest window(64, 64, {{Kind::removedInDrawing, drawing, "", 0, 0, 0x887A0005, {}, {}}});
        window.createWholeRenderer();
        EXPECT_TRUE(window.renderer->render(0));
        static_cast<void>(window.card.log->take());
        EXPECT_FALSE(window.renderer->render(0.1F)) << drawing;
        const auto calls = window.card.log->take();
        EXPECT_THAT(calls, Not(Contains("Present(0, 0)")));
        EXPECT_EQ(std::ranges::count(calls, "DrawIndexed(6, 0, 0)"), drawing - 3)
            << "nothing behind it is drawn";
    }
}

TEST(AnimationFrame, WhoseConstantsCannotBeMappedIsDrawnWithoutThem) {
    WindowUnderTest window(64, 64, {failing("Map", 1)});
    window.createWholeRenderer();
    static_cast<void>(window.card.log->take());
    EXPECT_TRUE(window.renderer->render(0));
    const auto calls = window.card.log->take();
    EXPECT_EQ(calls.at(0), "PSSetConstantBuffers(0, 1, [null])");
    EXPECT_EQ(calls.at(1), "ClearRenderTargetView(targetView#1, [0, 0, 0, 0])") << "no constants are bound";
    EXPECT_EQ(calls.back(), "Present(0, 0)");
}

TEST(AnimationReadBack, ThatCannotBeMappedIsFalseAndLeavesNothing) {
    WindowUnderTest window(64, 64, {failing("Map", 2)});
    window.createWholeRenderer();
    EXPECT_TRUE(window.renderer->render(0));
    ImageReadBack image;
    EXPECT_FALSE(window.renderer->readBack(image));
    EXPECT_EQ(image.data, nullptr);
}

TEST(AnimationFrame, IsWrongWhereABindOfTheSecondPictureIsLost) {
    // The second of a frame's three binds of a target: the scene is drawn over the first picture once more.
    WindowUnderTest window(64, 64, {lost("OMSetRenderTargets", 2)});
    window.createWholeRenderer();
    EXPECT_TRUE(window.renderer->render(1));
    const auto words = window.comparison();
    EXPECT_LT(std::ranges::count(words, 0U), std::ssize(words) / 2);
}

TEST(AnimationFrame, IsWrongWhereADrawOfTheSecondPictureIsLost) {
    WindowUnderTest window(64, 64, {lost("DrawIndexed", 2)});
    window.createWholeRenderer();
    EXPECT_TRUE(window.renderer->render(1));
    const auto words = window.comparison();
    EXPECT_LT(std::ranges::count(words, 0U), std::ssize(words) / 2);
}

class QuadFailure : public testing::TestWithParam<std::pair<const char*, std::uint32_t>> {};

INSTANTIATE_TEST_SUITE_P(Each, QuadFailure,
                         testing::Values(std::pair("CreateVertexShader", 1U),
                                         std::pair("CreatePixelShader", 1U),
                                         std::pair("CreateInputLayout", 1U), std::pair("CreateBuffer", 1U),
                                         std::pair("CreateBuffer", 2U)),
                         [](const auto& row) { return row.param.first + std::to_string(row.param.second); });

TEST_P(QuadFailure, LeavesAnEmptyObjectWithTheResultBesideIt) {
    for (const auto create : {createSceneObject, createCompareObject}) {
        CardSetup setup;
        setup.direct3d.faults = {failing(GetParam().first, GetParam().second)};
        CardUnderTest card(setup);
        const auto quad = create(64, 64, card.device->dx11Context());
        EXPECT_EQ(quad.result, static_cast<HRESULT>(0x80004005));
        EXPECT_EQ(quad.value.vertexShader, nullptr);
        EXPECT_EQ(quad.value.indexCount, 0U);
    }
}

} // namespace
} // namespace vexil::tests
