#include "module/video_card/stress/stress_services.h"

#include "module/video_card/stress/rendering/d3d11_renderer.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

// What the wireframe stress test really renders.
namespace vexil::tests {
namespace {

using module::video_card::systemStressServices;
using testing::Contains;
using testing::StartsWith;
using Kind = simulated::Direct3DFault::Kind;

TEST(SystemStressServices, RenderAWireframeSphereOf100SegmentsAt1920By1080) {
    CardUnderTest card;
    const auto scene = systemStressServices().createWireframeScene(card.device->dx11Context());
    ASSERT_NE(scene, nullptr);
    const auto calls = card.log->take();
    EXPECT_THAT(calls,
                Contains(StartsWith("CreateTexture2D({1920, 1080, 1, 1, 28, 1, 0, 0, 40, 0, 0}, ")).Times(2));
    EXPECT_THAT(calls, Contains(StartsWith("CreateRasterizerState({2, 3, 1, ")));
    EXPECT_THAT(calls, Contains("RSSetViewports(1, [{0, 0, 1920, 1080, 0, 1}])"));
    EXPECT_THAT(calls, Contains(StartsWith("CreateBuffer({2880000, 0, 1, 0, 0, 0}, "))) << "60,000 vertices";
    scene->advanceTime();
    EXPECT_TRUE(scene->renderFrame());
    EXPECT_THAT(card.log->take(), Contains("DrawIndexed(60000, 0, 0)").Times(1));
    EXPECT_EQ(scene->renderer().frameCount(), 1U);
}

TEST(SystemStressServices, HaveNoSceneWithoutRendererOrSphere) {
    for (const char* call : {"CreateSamplerState", "CreatePixelShader"}) {
        CardSetup setup;
        setup.direct3d.faults = {{Kind::failingCall, 1, call, 0, 0, 0x80004005, {}, {}}};
        CardUnderTest card(setup);
        EXPECT_EQ(systemStressServices().createWireframeScene(card.device->dx11Context()), nullptr) << call;
    }
}

TEST(SystemStressServices, TellOfAFrameThatFails) {
    CardSetup setup;
    setup.direct3d.faults = {{Kind::removedInDrawing, 2, "", 0, 0, 0x887A0005, {}, {}}};
    CardUnderTest card(setup);
    const auto scene = systemStressServices().createWireframeScene(card.device->dx11Context());
    ASSERT_NE(scene, nullptr);
    EXPECT_TRUE(scene->renderFrame());
    EXPECT_FALSE(scene->renderFrame());
}

} // namespace
} // namespace vexil::tests
