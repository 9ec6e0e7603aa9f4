#include "module/video_card/direct3d/texture_pipeline/texture_pipeline_test.h"

#include "module/video_card/direct3d/texture_pipeline/pattern_quad_shaders.h"
#include "module/video_card/direct3d/textured_quad_shaders.h"
#include "support/card_under_test.h"
#include "support/lock_at_reset.h"
#include "support/plain_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <random>
#include <string>
#include <vector>

// Runs on a healthy card, and the Direct3D calls that they make.
namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::Dx11TexturePipelineTest;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

template <typename Content>
std::string markOf(const Content& content) {
    return simulated::contentMark(std::as_bytes(std::span(content)));
}

TEST(TexturePipeline, PassesAThousandImagesOnThisMachine) {
    CardUnderTest card;
    static_cast<void>(card.log->take());
    Dx11TexturePipelineTest test;
    const LockAtReset watch(card.device);
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_THAT(watch.held(), ElementsAre(true)) << "the lock is held until the card has its next device";
    EXPECT_TRUE(watch.isFreeAgain());

    Lines progress;
    for (int pass = 0; pass < 1000; ++pass) {
        const float share = static_cast<float>(pass) / 1000.0F;
        progress.push_back("progress " + std::to_string(static_cast<int>(share * 100.0F)));
    }
    EXPECT_EQ(progress.back(), "progress 99");
    EXPECT_THAT(card.reporter.events, ElementsAreArray(progress))
        << "no message, and a progress for each pass";

    const auto calls = card.log->take();
    EXPECT_EQ(std::ranges::count(calls, "Draw(6, 0)"), 1000);
    EXPECT_EQ(
        std::ranges::count_if(calls, [](const auto& call) { return call.starts_with("CreateTexture2D"); }),
        3000)
        << "each pass makes its own textures";
    EXPECT_EQ(std::ranges::count_if(calls, [](const auto& call) { return call.starts_with("CreateBuffer"); }),
              1);
}

/// The calls of a run that a cancel ends behind its third pass.
class TexturePipelineCalls : public testing::Test {
protected:
    static void SetUpTestSuite() {
        CardUnderTest card;
        card.reporter.onProgress = [&, passes = 0](std::uint8_t) mutable { card.cancel = ++passes == 3; };
        Dx11TexturePipelineTest test;
        EXPECT_EQ(card.run(test), TestResult::NotCompleted);
        calls_ = card.log->take();
    }
    static Lines callsFrom(const std::string& start, std::size_t count) {
        const auto first =
            std::ranges::find_if(calls_, [&](const auto& line) { return line.starts_with(start); });
        const auto left = static_cast<std::size_t>(std::distance(first, calls_.end()));
        return {first, first + static_cast<std::ptrdiff_t>(std::min(count, left))};
    }

    static inline Lines calls_;
};

constexpr std::array<float, 30> vertices = {
    -1, -1, 0, 1, 0, //
    -1, 1,  0, 0, 0, //
    1,  1,  0, 0, 1, //
    1,  1,  0, 0, 1, //
    1,  -1, 0, 1, 1, //
    -1, -1, 0, 1, 0,
};

TEST_F(TexturePipelineCalls, BeginWithTheViewportAndTheFixedObjects) {
    const auto vertexShader = simulated::contentMark(module::video_card::shaders::texturedQuadVertexShader);
    const auto pixelShader = simulated::contentMark(module::video_card::shaders::patternQuadPixelShader);
    EXPECT_THAT(
        Lines(calls_.begin(), calls_.begin() + 5),
        ElementsAre("RSSetViewports(1, [{0, 0, 1024, 1024, 0, 0}])",
                    "CreateBuffer({120, 0, 1, 0, 0, 0}, " + markOf(vertices) + ") = buffer#1",
                    "CreateVertexShader(" + vertexShader + ", null) = vertexShader#1",
                    "CreatePixelShader(" + pixelShader + ", null) = pixelShader#1",
                    "CreateInputLayout([{POSITION {0, 6, 0, 0, 0, 0}}, {TEXCOORD {0, 16, 0, 12, 0, 0}}], " +
                        vertexShader + ") = inputLayout#1"));
}

/// The calls of one pass, with its textures and views numbered.
Lines passCalls(unsigned pass) {
    std::mt19937 engine(pass);
    std::vector<std::uint32_t> image(0x100000);
    std::ranges::generate(image, [&] { return engine(); });
    const std::vector<std::uint32_t> blank(0x100000);
    const auto name = [&](const char* kind, unsigned each, unsigned which) {
        return std::string(kind) + "#" + std::to_string(each * pass + which);
    };
    const auto target = name("texture", 3, 1);
    const auto staging = name("texture", 3, 2);
    const auto source = name("texture", 3, 3);
    const auto targetView = name("targetView", 1, 1);
    const auto sourceView = name("resourceView", 2, 2);
    const auto sampler = name("sampler", 1, 1);
    const std::string extent = "CreateTexture2D({1024, 1024, 1, 1, 28, 1, 0, ";
    return {
        extent + "0, 40, 0, 0}, " + markOf(blank) + ") = " + target,
        "CreateRenderTargetView(" + target + ", {28, 4, 0}) = " + targetView,
        "CreateShaderResourceView(" + target + ", {28, 4, 0, 1}) = " + name("resourceView", 2, 1),
        extent + "3, 0, 131072, 0}, null) = " + staging,
        extent + "1, 8, 0, 0}, " + markOf(image) + ") = " + source,
        "CreateShaderResourceView(" + source + ", {28, 4, 0, 1}) = " + sourceView,
        "CreateSamplerState({0, 3, 3, 3, 0, 0, 8, 0, 0, 0, 0, -3.40282347e+38, 3.40282347e+38}) = " + sampler,
        "VSSetShader(vertexShader#1, null, 0)",
        "PSSetShader(pixelShader#1, null, 0)",
        "IASetInputLayout(inputLayout#1)",
        "OMSetRenderTargets(1, [" + targetView + "], null)",
        "PSSetShaderResources(0, 1, [" + sourceView + "])",
        "PSSetSamplers(0, 1, [" + sampler + "])",
        "ClearRenderTargetView(" + targetView + ", [0, 0, 0, 1])",
        "IASetVertexBuffers(0, 1, [buffer#1], [20], [0])",
        "IASetPrimitiveTopology(4)",
        "Draw(6, 0)",
        "Flush()",
        "CopyResource(" + staging + ", " + target + ")",
        "Map(" + staging + ", 0, 1, 0)",
        "Unmap(" + staging + ", 0)",
    };
}

TEST_F(TexturePipelineCalls, OfEachPassDrawTheImageOfItsSeed) {
    ASSERT_EQ(calls_.size(), 5U + 3 * 21 + 3);
    for (unsigned pass = 0; pass < 3; ++pass) {
        const auto first = calls_.begin() + 5 + 21 * static_cast<std::ptrdiff_t>(pass);
        EXPECT_THAT(Lines(first, first + 21), ElementsAreArray(passCalls(pass))) << "pass " << pass;
    }
}

TEST_F(TexturePipelineCalls, EndWithTheResetOfTheDevice) {
    EXPECT_THAT(
        Lines(calls_.end() - 3, calls_.end()),
        ElementsAre("ClearState()", "Flush()", "D3D11CreateDevice(0, null, 32, [45056], 1, 7, null)"));
}

TEST(TexturePipelineTest, IsTheTestOfItsCatalogueEntry) {
    Dx11TexturePipelineTest test;
    EXPECT_EQ(test.id(), 3);
    EXPECT_EQ(test.descriptor().name, "TEXTURE_PIPELINE_TEST");
    EXPECT_EQ(test.descriptor().tooltip, "TEXTURE_PIPELINE_TEST_TOOL_TIP");
    EXPECT_EQ(test.descriptor().group, "QUICK_TESTS");
    EXPECT_EQ(test.expectedDurationMinutes(), 1U);
    EXPECT_FALSE(test.requiresExclusiveRun());
    EXPECT_TRUE(test.parameters().empty());
}

TEST(TexturePipelineTest, IsOfferedForEveryCardWithADirect3DDevice) {
    Dx11TexturePipelineTest test;
    CardUnderTest card;
    EXPECT_TRUE(test.isSupported(card.device.get(), card.device));
    auto context = card.device->dx11Context();
    context.adapterInfo.desc.VendorId = 0x1414;
    context.adapterInfo.desc.DeviceId = 0x8C;
    card.device->setDirect3D(context);
    EXPECT_TRUE(test.isSupported(card.device.get(), card.device)) << "the software adapter too";
    card.device->lock().slot().reset();
    EXPECT_FALSE(test.isSupported(card.device.get(), card.device));
    const auto other = std::make_shared<PlainDevice>("other");
    EXPECT_FALSE(test.isSupported(other.get(), other));
    EXPECT_FALSE(test.isSupported(nullptr, nullptr));
}

} // namespace
} // namespace vexil::tests
