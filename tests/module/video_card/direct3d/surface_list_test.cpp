#include "module/video_card/direct3d/surface_list.h"
#include "support/card_under_test.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace vexil::tests {
namespace {

using module::video_card::createSurfaces;
using module::video_card::VideoSurface;
using simulated::Direct3DFault;

constexpr std::uint32_t outOfMemory = 0x8007000E;

struct Made {
    bool succeeded;
    std::vector<VideoSurface> surfaces;
};

Made makeOn(CardUnderTest& card, std::uint32_t count) {
    Made made{};
    made.succeeded = createSurfaces(*card.device->dx11Context().device, count, made.surfaces);
    return made;
}

CardSetup failingFrom(std::uint32_t surface, std::uint32_t result) {
    CardSetup setup;
    setup.direct3d.faults = {{Direct3DFault::Kind::surfaceAllocation, surface, "", 0, 0, result}};
    return setup;
}

TEST(CreateSurfaces, MakesTexturesOfFourMebibytesWithTheirViews) {
    CardUnderTest card;
    const auto made = makeOn(card, 3);
    ASSERT_TRUE(made.succeeded);
    ASSERT_EQ(made.surfaces.size(), 3U);
    for (const auto& surface : made.surfaces) {
        D3D11_TEXTURE2D_DESC desc{};
        surface.texture->GetDesc(&desc);
        EXPECT_EQ(desc.Width * desc.Height * 4, module::video_card::surfaceBytes);
        ID3D11Resource* viewed = nullptr;
        surface.view->GetResource(&viewed);
        EXPECT_EQ(viewed, surface.texture.get());
        viewed->Release();
    }
}

TEST(CreateSurfaces, FailsForACountOfNone) {
    CardUnderTest card;
    EXPECT_FALSE(makeOn(card, 0).succeeded);
}

TEST(CreateSurfaces, KeepsWhatItHasWhenTheMemoryIsFull) {
    CardUnderTest card(failingFrom(4, outOfMemory));
    const auto made = makeOn(card, 10);
    EXPECT_TRUE(made.succeeded);
    EXPECT_EQ(made.surfaces.size(), 3U);
}

TEST(CreateSurfaces, FailsWhenTheMemoryIsFullFromTheStart) {
    CardUnderTest card(failingFrom(1, outOfMemory));
    EXPECT_FALSE(makeOn(card, 10).succeeded);
}

TEST(CreateSurfaces, FailsForAnyOtherCode) {
    CardUnderTest card(failingFrom(4, 0x80004005));
    EXPECT_FALSE(makeOn(card, 10).succeeded);
}

} // namespace
} // namespace vexil::tests
