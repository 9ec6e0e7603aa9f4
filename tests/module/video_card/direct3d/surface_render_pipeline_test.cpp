#include "module/video_card/direct3d/surface_list.h"
#include "module/video_card/direct3d/surface_read_back.h"
#include "module/video_card/direct3d/surface_render_pipeline.h"
#include "support/card_under_test.h"
#include "utils/mersenne_twister.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

// What the draw of a surface does to its target, read back from the card.
namespace vexil::tests {
namespace {

using module::video_card::createSurfaces;
using module::video_card::readBackSurface;
using module::video_card::surfaceBytes;
using module::video_card::SurfaceRenderPipeline;
using Image = std::vector<std::uint8_t>;

class SurfaceDraw : public testing::Test {
protected:
    SurfaceDraw() : surface_(surfaceBytes) {
        EXPECT_TRUE(createSurfaces(*dx11_.device, 1, surfaces_));
        EXPECT_EQ(pipeline_.create(*dx11_.device, *dx11_.context), S_OK);
        utils::MersenneTwister random(5);
        random.fillLowBytes(surface_);
        dx11_.context->UpdateSubresource(surfaces_[0].texture.get(), 0, nullptr, surface_.data(), 4096, 0);
    }

    Image target() {
        pipeline_.draw(*dx11_.context, surfaces_[0].view.get());
        Image image(surfaceBytes);
        EXPECT_EQ(readBackSurface(*dx11_.device, *dx11_.context, *pipeline_.targetTexture, image), S_OK);
        return image;
    }

    CardUnderTest card_;
    module::video_card::Dx11Context dx11_ = card_.device->dx11Context();
    std::vector<module::video_card::VideoSurface> surfaces_;
    SurfaceRenderPipeline pipeline_;
    Image surface_;
};

TEST_F(SurfaceDraw, LeavesTheTargetWhiteSinceTheQuadLiesOnTheFarPlane) {
    const auto image = target();
    EXPECT_EQ(std::ranges::count(image, 0xFF), std::ptrdiff_t{surfaceBytes});
}

TEST_F(SurfaceDraw, ReadsEveryTexelOfTheSurfaceWhereNoDepthIsTested) {
    D3D11_DEPTH_STENCIL_DESC description{};
    ID3D11DepthStencilState* state = nullptr;
    ASSERT_EQ(dx11_.device->CreateDepthStencilState(&description, &state), S_OK);
    dx11_.context->OMSetDepthStencilState(state, 0);
    state->Release();

    const auto image = target();
    std::size_t differing = 0;
    for (std::size_t i = 0; i < image.size(); ++i) {
        differing += std::abs(image[i] - surface_[i]) > 1 ? 1 : 0; // A linear filter may round.
    }
    EXPECT_EQ(differing, 0U);
}

} // namespace
} // namespace vexil::tests
