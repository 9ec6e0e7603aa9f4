#include "module/video_card/stress/rendering/d3d11_offscreen_renderer.h"
#include "module/video_card/stress/rendering/sphere_objects.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <random>
#include <span>
#include <string>
#include <vector>

// The calls of the offscreen renderer as they reached the device.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::ElementsAreArray;
using Lines = std::vector<std::string>;

constexpr std::uint32_t width = 64;
constexpr std::uint32_t height = 48;

template <typename Content>
std::string markOf(const Content& content) {
    return simulated::contentMark(std::as_bytes(std::span(content)));
}

std::string patternMark() {
    std::mt19937 engine(0x600DCAFE);
    std::vector<std::uint32_t> pixels(width * height);
    std::ranges::generate(pixels, [&] { return static_cast<std::uint32_t>(engine()) | 0xFF; });
    return markOf(pixels);
}

std::string matricesMark(const Matrix& model) {
    return markOf(std::vector{model, lookToMatrix({0, 0, -50}, {0, 0, 50}, {0, 1, 0}),
                              perspectiveMatrix(2 * 0.3926991F, 64.0F / 48.0F, 50, 20000)});
}

Lines creation(bool wireframe) {
    const auto blank = markOf(std::vector<std::uint32_t>(width * height));
    return {
        "CreateTexture2D({64, 48, 1, 1, 28, 1, 0, 0, 40, 0, 0}, " + blank + ") = texture#1",
        "CreateRenderTargetView(texture#1, {28, 4, 0}) = targetView#1",
        "CreateShaderResourceView(texture#1, {28, 4, 0, 1}) = resourceView#1",
        "CreateTexture2D({64, 48, 1, 1, 28, 1, 0, 0, 40, 0, 0}, " + blank + ") = texture#2",
        "CreateRenderTargetView(texture#2, {28, 4, 0}) = targetView#2",
        "CreateShaderResourceView(texture#2, {28, 4, 0, 1}) = resourceView#2",
        "CreateTexture2D({64, 48, 1, 1, 45, 1, 0, 0, 64, 0, 0}, null) = texture#3",
        "CreateDepthStencilState({{1, 1, 2, 1, 255, 255}, {1, 7, 1, 8}, {1, 8, 1, 8}}) = depthState#1",
        "OMSetDepthStencilState(depthState#1, 1)",
        "CreateDepthStencilView(texture#3, {45, 5, 0, 0, 0}) = depthView#1",
        std::string("CreateRasterizerState({") + (wireframe ? "2" : "3") +
            ", 3, 1, 0, 0, 0, 1, 0, 0, 0}) = rasterizerState#1",
        "RSSetState(rasterizerState#1)",
        "CreateBuffer({192, 2, 4, 65536, 0, 0}, " + matricesMark(identityMatrix()) + ") = buffer#1",
        "CreateTexture2D({64, 48, 1, 1, 28, 1, 0, 1, 8, 0, 0}, " + patternMark() + ") = texture#4",
        "CreateShaderResourceView(texture#4, {28, 4, 0, 1}) = resourceView#3",
        "CreateSamplerState({0, 1, 1, 1, 0, 1, 8, 0, 0, 0, 0, -3.40282347e+38, 3.40282347e+38}) = sampler#1",
        "CreateTexture2D({64, 48, 1, 1, 28, 1, 0, 3, 0, 131072, 0}, null) = texture#5",
        "RSSetViewports(1, [{0, 0, 64, 48, 0, 1}])",
    };
}

class OffscreenRendererCalls : public testing::Test {
protected:
    Lines frame() {
        EXPECT_TRUE(renderer_->renderFrame());
        return card_.log->take();
    }

    CardUnderTest card_;
    Dx11Context dx11_ = card_.device->dx11Context();
    std::shared_ptr<D3D11OffscreenRenderer> renderer_ = createOffscreenRenderer(dx11_, width, height, true);
    Lines creation_ = card_.log->take();
};

TEST_F(OffscreenRendererCalls, MakeEachObjectOfTheWireframeInOrder) {
    EXPECT_THAT(creation_, ElementsAreArray(creation(true)));
}

TEST(OffscreenRenderer, FillsItsTrianglesWithoutWireframe) {
    CardUnderTest card;
    const auto renderer = createOffscreenRenderer(card.device->dx11Context(), width, height, false);
    EXPECT_THAT(card.log->take(), ElementsAreArray(creation(false)));
}

Lines frameCalls(const std::string& target, const std::string& previous) {
    return {
        "OMSetRenderTargets(1, [null], null)",
        "PSSetShaderResources(0, 1, [null])",
        "PSSetShaderResources(1, 1, [resourceView#3])",
        "PSSetSamplers(0, 1, [sampler#1])",
        "OMSetRenderTargets(1, [" + target + "], depthView#1)",
        "PSSetShaderResources(0, 1, [" + previous + "])",
        "ClearRenderTargetView(" + target + ", [0, 0, 0, 0])",
        "ClearDepthStencilView(depthView#1, 3, 1, 0)",
        "VSSetConstantBuffers(0, 1, [null])",
        "Map(buffer#1, 0, 4, 0)",
        "Unmap(buffer#1, 0)",
        "VSSetConstantBuffers(0, 1, [buffer#1])",
        "IASetInputLayout(inputLayout#1)",
        "VSSetShader(vertexShader#1, null, 0)",
        "PSSetShader(pixelShader#1, null, 0)",
        "IASetVertexBuffers(0, 1, [buffer#2], [48], [0])",
        "IASetPrimitiveTopology(4)",
        "IASetIndexBuffer(buffer#3, 42, 0)",
        "DrawIndexed(96, 0, 0)",
        "Flush()",
        "GetDeviceRemovedReason()",
    };
}

TEST_F(OffscreenRendererCalls, DrawEachFrameIntoTheOtherTarget) {
    renderer_->setObjects(createSphereObjects(4, dx11_).value);
    static_cast<void>(card_.log->take());
    EXPECT_THAT(frame(), ElementsAreArray(frameCalls("targetView#1", "resourceView#2")));
    EXPECT_THAT(frame(), ElementsAreArray(frameCalls("targetView#2", "resourceView#1")));
    EXPECT_THAT(frame(), ElementsAreArray(frameCalls("targetView#1", "resourceView#2")))
        << "after two frames the first target's turn has come again";
}

/// The matrices that the vertex shader has been given: model, view and projection.
std::array<Matrix, 3> boundMatrices(const Dx11Context& dx11) {
    ID3D11Buffer* buffer = nullptr;
    dx11.context->VSGetConstantBuffers(0, 1, &buffer);
    D3D11_BUFFER_DESC description{};
    buffer->GetDesc(&description);
    std::array<Matrix, 3> matrices{};
    EXPECT_EQ(description.ByteWidth, sizeof(matrices));
    description.Usage = D3D11_USAGE_STAGING;
    description.BindFlags = 0;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    ID3D11Buffer* copy = nullptr;
    EXPECT_EQ(dx11.device->CreateBuffer(&description, nullptr, &copy), S_OK);
    dx11.context->CopyResource(copy, buffer);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    EXPECT_EQ(dx11.context->Map(copy, 0, D3D11_MAP_READ, 0, &mapped), S_OK);
    std::memcpy(&matrices, mapped.pData, sizeof(matrices));
    dx11.context->Unmap(copy, 0);
    copy->Release();
    buffer->Release();
    return matrices;
}

TEST_F(OffscreenRendererCalls, TurnTheModelByATwentiethWithEachStepAndEnlargeItFiftyTimes) {
    float angle = 0;
    for (int step = 0; step < 3; ++step) {
        static_cast<void>(frame());
        const auto [model, view, projection] = boundMatrices(dx11_);
        EXPECT_EQ(model, multiply(rotationYMatrix(angle), scalingMatrix(50))) << step;
        EXPECT_EQ(view, lookToMatrix({0, 0, -50}, {0, 0, 50}, {0, 1, 0}));
        EXPECT_EQ(projection, perspectiveMatrix(2 * 0.3926991F, 64.0F / 48.0F, 50, 20000));
        renderer_->advanceTime();
        angle += 0.05F;
    }
}

TEST_F(OffscreenRendererCalls, DrawEveryObjectOfAllLists) {
    renderer_->setObjects(createSphereObjects(1, dx11_).value);
    auto more = createSphereObjects(2, dx11_).value;
    more.push_back(createSphereObjects(3, dx11_).value.at(0));
    renderer_->setObjects(more);
    static_cast<void>(card_.log->take());
    Lines drawn;
    for (const auto& call : frame()) {
        if (call.starts_with("DrawIndexed")) {
            drawn.push_back(call);
        }
    }
    EXPECT_THAT(drawn,
                ElementsAreArray({"DrawIndexed(6, 0, 0)", "DrawIndexed(24, 0, 0)", "DrawIndexed(54, 0, 0)"}));
}

TEST_F(OffscreenRendererCalls, ReadBackTheTargetOfTheLastFrame) {
    ImageReadBack image;
    static_cast<void>(frame());
    ASSERT_TRUE(renderer_->readBack(image));
    EXPECT_THAT(card_.log->take(),
                ElementsAreArray({"CopyResource(texture#5, texture#1)", "Map(texture#5, 0, 1, 0)"}));
    static_cast<void>(frame());
    ASSERT_TRUE(renderer_->readBack(image));
    EXPECT_THAT(card_.log->take(),
                ElementsAreArray({"Unmap(texture#5, 0)", "CopyResource(texture#5, texture#2)",
                                  "Map(texture#5, 0, 1, 0)"}));
    EXPECT_EQ(image.width, width);
    EXPECT_EQ(image.height, height);
    EXPECT_EQ(image.sizeBytes, width * height * 4U);
    image = {};
    EXPECT_THAT(card_.log->take(), ElementsAreArray({"Unmap(texture#5, 0)"}));
}

} // namespace
} // namespace vexil::tests
