#include "module/video_card/stress/rendering/d3d11_offscreen_renderer.h"
#include "module/video_card/stress/rendering/sphere_objects.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <exception>
#include <string>
#include <thread>

namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::Contains;
using testing::Not;
using testing::StartsWith;
using Fault = simulated::Direct3DFault;
using Kind = Fault::Kind;

CardSetup cardWith(const Fault& fault) {
    CardSetup setup;
    setup.direct3d.faults = {fault};
    return setup;
}

struct CallRow {
    const char* call;
    std::uint32_t number;
};

class OffscreenCreation : public testing::TestWithParam<CallRow> {};

INSTANTIATE_TEST_SUITE_P(
    Each, OffscreenCreation,
    testing::Values(CallRow{"CreateTexture2D", 1}, CallRow{"CreateTexture2D", 2},
                    CallRow{"CreateTexture2D", 3}, CallRow{"CreateTexture2D", 4},
                    CallRow{"CreateTexture2D", 5}, CallRow{"CreateRenderTargetView", 1},
                    CallRow{"CreateRenderTargetView", 2}, CallRow{"CreateShaderResourceView", 1},
                    CallRow{"CreateShaderResourceView", 2}, CallRow{"CreateShaderResourceView", 3},
                    CallRow{"CreateDepthStencilState", 1}, CallRow{"CreateDepthStencilView", 1},
                    CallRow{"CreateRasterizerState", 1}, CallRow{"CreateBuffer", 1},
                    CallRow{"CreateSamplerState", 1}),
    [](const auto& row) { return row.param.call + std::to_string(row.param.number); });

TEST_P(OffscreenCreation, ThatFailsThrowsAndReleasesEverything) {
    CardUnderTest card(
        cardWith({Kind::failingCall, GetParam().number, GetParam().call, 0, 0, 0x80004005, {}, {}}));
    const auto dx11 = card.device->dx11Context();
    EXPECT_THROW(static_cast<void>(createOffscreenRenderer(dx11, 16, 16, true)), std::exception);
    dx11.context->ClearState();
    dx11.context->Flush();
    EXPECT_EQ(card.card->usedMemory, 0U);
}

TEST(OffscreenFrame, OfARemovedDeviceFailsFromThatFrameOn) {
    CardUnderTest card(cardWith({Kind::removedInDrawing, 3, "", 0, 0, 0x887A0005, {}, {}}));
    const auto dx11 = card.device->dx11Context();
    const auto renderer = createOffscreenRenderer(dx11, 16, 16, true);
    renderer->setObjects(createSphereObjects(3, dx11).value);
    EXPECT_TRUE(renderer->renderFrame());
    EXPECT_TRUE(renderer->renderFrame());
    EXPECT_FALSE(renderer->renderFrame());
    EXPECT_EQ(renderer->frameCount(), 3U) << "a frame that fails is counted";
}

TEST(OffscreenFrame, WhoseMatricesCannotBeMappedCountsAsDrawn) {
    CardUnderTest card(cardWith({Kind::failingCall, 1, "Map", 0, 0, 0x80004005, {}, {}}));
    const auto dx11 = card.device->dx11Context();
    const auto renderer = createOffscreenRenderer(dx11, 16, 16, true);
    renderer->setObjects(createSphereObjects(3, dx11).value);
    static_cast<void>(card.log->take());
    EXPECT_TRUE(renderer->renderFrame());
    const auto calls = card.log->take();
    EXPECT_THAT(calls, Not(Contains(StartsWith("DrawIndexed"))));
    EXPECT_THAT(calls, Not(Contains("Flush()")));
    // DXVK's compiling threads may miss their end where a device ends as soon as it has got its first
    // shaders.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

TEST(OffscreenReadBack, ThatCannotBeMappedIsFalseAndLeavesNothing) {
    CardUnderTest card(cardWith({Kind::failingCall, 1, "Map", 0, 0, 0x80004005, {}, {}}));
    const auto renderer = createOffscreenRenderer(card.device->dx11Context(), 16, 16, true);
    ImageReadBack image;
    image.sizeBytes = 7;
    EXPECT_FALSE(renderer->readBack(image));
    EXPECT_EQ(image.data, nullptr);
    EXPECT_EQ(image.sizeBytes, 0U);
}

TEST(OffscreenRate, IsNotFiniteBeforeTheFirstFrame) {
    CardUnderTest card;
    const auto renderer = createOffscreenRenderer(card.device->dx11Context(), 16, 16, true);
    EXPECT_FALSE(std::isfinite(renderer->framesPerSecond()));
    EXPECT_EQ(renderer->frameCount(), 0U);
}

TEST(OffscreenRate, CountsFramesSinceTheFirst) {
    CardUnderTest card;
    const auto renderer = createOffscreenRenderer(card.device->dx11Context(), 16, 16, true);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(renderer->renderFrame());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const float rate = renderer->framesPerSecond();
    const std::chrono::duration<float> elapsed = std::chrono::steady_clock::now() - start;
    EXPECT_GE(rate, 20.0F / elapsed.count()) << "the time before the first frame does not count";
    EXPECT_LE(rate, 20.0F / 0.05F);
    EXPECT_EQ(renderer->frameCount(), 20U);
}

} // namespace
} // namespace vexil::tests
