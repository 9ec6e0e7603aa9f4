#include "module/video_card/stress/rendering/quad_objects.h"
#include "window_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <span>
#include <string>
#include <vector>

// The calls of the animation renderer as they reached the device.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::ElementsAreArray;
using testing::StartsWith;
using Lines = std::vector<std::string>;

template <typename Content>
std::string markOf(const Content& content) {
    return simulated::contentMark(std::as_bytes(std::span(content)));
}

std::string matricesMark(float width, float height) {
    return markOf(std::vector{identityMatrix(), lookToMatrix({0, 0, -10}, {0, 0, 10}, {0, 1, 0}),
                              orthographicMatrix(width, height, 0.1F, 1000)});
}

TEST(AnimationRendererCalls, MakeEachObjectInOrder) {
    WindowUnderTest window(96, 64);
    static_cast<void>(window.card.log->take());
    window.createRenderer();
    EXPECT_THAT(
        window.card.log->take(),
        ElementsAreArray(Lines{
            "CreateSwapChain({96, 64, 60, 1, 87, 1, 0, 1, 4.2949673e+09, 48, 1, 1, 0, 0})",
            "CreateRenderTargetView(?, {87, 4, 0}) = targetView#1",
            "CreateShaderResourceView(?, {87, 4, 0, 4.2949673e+09}) = resourceView#1",
            "CreateTexture2D({96, 64, 1, 1, 87, 1, 4.2949673e+09, 0, 40, 0, 0}, null) = texture#1",
            "CreateRenderTargetView(texture#1, {87, 4, 0}) = targetView#2",
            "CreateShaderResourceView(texture#1, {87, 4, 0, 4.2949673e+09}) = resourceView#2",
            "CreateTexture2D({96, 64, 1, 1, 87, 1, 4.2949673e+09, 0, 40, 0, 0}, null) = texture#2",
            "CreateRenderTargetView(texture#2, {87, 4, 0}) = targetView#3",
            "CreateTexture2D({96, 64, 1, 1, 87, 1, 0, 3, 0, 131072, 0}, null) = texture#3",
            "CreateTexture2D({96, 64, 1, 1, 45, 1, 4.2949673e+09, 0, 64, 0, 0}, null) = texture#4",
            "CreateDepthStencilState({{0, 1, 2, 1, 255, 255}, {1, 7, 1, 8}, {1, 8, 1, 8}}) = depthState#1",
            "OMSetDepthStencilState(depthState#1, 1)",
            "CreateDepthStencilView(texture#4, {45, 5, 0, 0, 0}) = depthView#1",
            "CreateRasterizerState({3, 3, 0, 0, 0, 0, 1, 0, 0, 0}) = rasterizerState#1",
            "RSSetState(rasterizerState#1)",
            "CreateBuffer({192, 2, 4, 65536, 0, 0}, " + matricesMark(96, 64) + ") = buffer#1",
            "CreateBuffer({16, 2, 4, 65536, 0, 0}, " + markOf(std::vector<float>{96, 64, 0, 0}) +
                ") = buffer#2",
            "RSSetViewports(1, [{0, 0, 96, 64, 0, 1}])",
        }));
}

TEST(AnimationRendererCalls, MakeAQuadOfTheWindowsSize) {
    WindowUnderTest window(96, 64);
    // The size is halved in whole numbers.
    const float w = 50;
    const float h = 30;
    std::vector<float> vertices(48);
    const float corners[][2] = {{-w, -h}, {-w, h}, {w, h}, {w, -h}};
    for (std::size_t i = 0; i < 4; ++i) {
        vertices[i * 12] = corners[i][0];
        vertices[i * 12 + 1] = corners[i][1];
    }
    const std::vector<std::uint32_t> indices = {0, 1, 2, 2, 3, 0};
    for (const auto create : {createSceneObject, createCompareObject}) {
        static_cast<void>(window.card.log->take());
        const auto quad = create(101, 61, window.dx11);
        ASSERT_EQ(quad.result, S_OK);
        EXPECT_EQ(quad.value.vertexCount, 4U);
        EXPECT_EQ(quad.value.indexCount, 6U);
        EXPECT_EQ(quad.value.triangleCount, 2U);
        const auto calls = window.card.log->take();
        ASSERT_EQ(calls.size(), 5U);
        EXPECT_THAT(calls[0], StartsWith("CreateVertexShader("));
        EXPECT_THAT(calls[1], StartsWith("CreatePixelShader("));
        EXPECT_THAT(calls[2], StartsWith("CreateInputLayout([{POSITION {0, 6, 0, 0, 0, 0}}], "));
        EXPECT_THAT(calls[3], StartsWith("CreateBuffer({192, 0, 1, 0, 0, 0}, " + markOf(vertices) + ")"));
        EXPECT_THAT(calls[4], StartsWith("CreateBuffer({24, 0, 2, 0, 0, 0}, " + markOf(indices) + ")"));
    }
}

Lines pass(const std::string& target) {
    return {"ClearRenderTargetView(" + target + ", [0, 0, 0, 0])",
            "ClearDepthStencilView(depthView#1, 3, 1, 0)",
            "OMSetRenderTargets(1, [" + target + "], depthView#1)"};
}

Lines drawing(int number) {
    const auto n = std::to_string(number);
    return {"IASetInputLayout(inputLayout#" + n + ")",
            "VSSetShader(vertexShader#" + n + ", null, 0)",
            "PSSetShader(pixelShader#" + n + ", null, 0)",
            "IASetVertexBuffers(0, 1, [buffer#" + std::to_string(1 + 2 * number) + "], [48], [0])",
            "IASetPrimitiveTopology(4)",
            "IASetIndexBuffer(buffer#" + std::to_string(2 + 2 * number) + ", 42, 0)",
            "DrawIndexed(6, 0, 0)",
            "GetDeviceRemovedReason()"};
}

TEST(AnimationRendererCalls, DrawEachFrameTwiceAndCompareBeforeItIsShown) {
    WindowUnderTest window(64, 64);
    static_cast<void>(window.card.log->take());
    window.createWholeRenderer();
    static_cast<void>(window.card.log->take());
    Lines expected = {"PSSetConstantBuffers(0, 1, [null])", "Map(buffer#2, 0, 4, 0)", "Unmap(buffer#2, 0)",
                      "VSSetConstantBuffers(0, 1, [buffer#1])", "PSSetConstantBuffers(0, 1, [buffer#2])"};
    const auto add = [&](const Lines& lines) { expected.insert(expected.end(), lines.begin(), lines.end()); };
    add(pass("targetView#1"));
    add(drawing(1));
    add(pass("targetView#2"));
    add(drawing(1));
    add(pass("targetView#3"));
    add({"PSSetShaderResources(0, 2, [resourceView#1, resourceView#2])"});
    add(drawing(2));
    add({"Present(0, 0)"});
    ASSERT_TRUE(window.renderer->render(1));
    EXPECT_THAT(window.card.log->take(), ElementsAreArray(expected));
}

TEST(AnimationRendererCalls, ReadBackTheComparisonAndNotTheBackBuffer) {
    WindowUnderTest window(96, 64);
    static_cast<void>(window.card.log->take());
    window.createRenderer();
    static_cast<void>(window.card.log->take());
    ImageReadBack image;
    ASSERT_TRUE(window.renderer->readBack(image));
    EXPECT_THAT(window.card.log->take(),
                ElementsAreArray({"CopyResource(texture#3, texture#2)", "Map(texture#3, 0, 1, 0)"}));
    EXPECT_EQ(image.width, 96U);
    EXPECT_EQ(image.height, 64U);
    EXPECT_EQ(image.sizeBytes, 96U * 64 * 4);
}

TEST(AnimationRendererCalls, CountThreeDrawsForEachFrame) {
    WindowUnderTest window(64, 64);
    window.createWholeRenderer();
    EXPECT_EQ(window.renderer->frameCount(), 0U);
    EXPECT_FALSE(std::isfinite(window.renderer->framesPerSecond()));
    ASSERT_TRUE(window.renderer->render(0));
    EXPECT_EQ(window.renderer->frameCount(), 3U);
    ASSERT_TRUE(window.renderer->render(0.1F));
    EXPECT_EQ(window.renderer->frameCount(), 6U);
}

} // namespace
} // namespace vexil::tests
