#include "module/video_card/direct3d/video_memory_test.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

// The order and the arguments of the Direct3D calls of a run, as they reached the device. Records are written
// field by field in braces, lists in brackets, contents as marks.
namespace vexil::tests {
namespace {

using module::video_card::Dx11VideoMemoryTest;
using testing::ElementsAreArray;
using Lines = std::vector<std::string>;

constexpr std::uint64_t mebibyte = 1 << 20;

template <typename T>
std::string markOf(const std::vector<T>& content) {
    return simulated::contentMark(std::as_bytes(std::span(content)));
}

/// The marks of the first images, made with the standard library's engine.
Lines imageMarks(int count) {
    std::mt19937 engine(123);
    Lines marks;
    std::vector<std::uint8_t> image(0x400000);
    for (int i = 0; i < count; ++i) {
        std::ranges::generate(image, [&] { return static_cast<std::uint8_t>(engine()); });
        marks.push_back(markOf(image));
    }
    return marks;
}

/// A run over two surfaces, done once for all tests of this file.
class VideoMemoryCalls : public testing::Test {
protected:
    static void SetUpTestSuite() {
        CardSetup setup;
        setup.freeMemory = 10 * mebibyte;
        CardUnderTest card(setup);
        setUpCalls_ = card.setUpCalls;
        Dx11VideoMemoryTest test;
        ASSERT_EQ(card.run(test), core::TestResult::Passed);
        calls_ = card.log->take();
    }

    static Lines setUpCalls() { return setUpCalls_; }
    static Lines calls() { return calls_; }
    /// `count` calls from the first that begins with `start`.
    static Lines callsFrom(const std::string& start, std::size_t count) {
        const auto first =
            std::ranges::find_if(calls_, [&](const auto& line) { return line.starts_with(start); });
        const auto left = static_cast<std::size_t>(std::distance(first, calls_.end()));
        return {first, first + static_cast<std::ptrdiff_t>(std::min(count, left))};
    }

    static inline Lines setUpCalls_;
    static inline Lines calls_;
};

const std::string surface = "{1024, 1024, 1, 1, 28, 1, 0, 0, 8, 0, 0}";
const std::string staging = "{1024, 1024, 1, 1, 28, 1, 0, 3, 0, 131072, 0}";

Lines drawCalls(const std::string& view) {
    return {
        "OMSetRenderTargets(1, [targetView#1], depthView#1)",
        "ClearRenderTargetView(targetView#1, [1, 1, 1, 1])",
        "ClearDepthStencilView(depthView#1, 3, 1, 0)",
        "IASetInputLayout(inputLayout#1)",
        "IASetVertexBuffers(0, 1, [buffer#1], [20], [0])",
        "IASetPrimitiveTopology(4)",
        "IASetIndexBuffer(buffer#2, 42, 0)",
        "VSSetShader(vertexShader#1, null, 0)",
        "PSSetShader(pixelShader#1, null, 0)",
        "PSSetSamplers(0, 1, [sampler#1])",
        "PSSetShaderResources(0, 1, [" + view + "])",
        "DrawIndexed(6, 0, 0)",
        "Flush()",
    };
}

Lines readBackCalls(const std::string& texture, const std::string& temporary, const std::string& copy) {
    return {
        "CreateTexture2D(" + surface + ", null) = " + temporary,
        "CheckFormatSupport(28)",
        "ResolveSubresource(" + temporary + ", 0, " + texture + ", 0, 28)",
        "CreateTexture2D(" + staging + ", null) = " + copy,
        "CopyResource(" + copy + ", " + texture + ")",
        "Map(" + copy + ", 0, 1, 0)",
        "Unmap(" + copy + ", 0)",
    };
}

TEST_F(VideoMemoryCalls, MakeADeviceOfLevel11WithBgraSupport) {
    EXPECT_THAT(setUpCalls(), ElementsAreArray({"D3D11CreateDevice(0, null, 32, [45056], 1, 7, null)"}));
}

TEST_F(VideoMemoryCalls, BeginWithTheQuestionWhetherTheDeviceIsThere) {
    EXPECT_EQ(calls().at(0), "GetDeviceRemovedReason()");
    EXPECT_TRUE(calls().at(1).starts_with("CreateTexture2D"));
}

TEST_F(VideoMemoryCalls, MakeTheTargetAndItsViewport) {
    EXPECT_THAT(
        callsFrom("CreateTexture2D", 3),
        ElementsAreArray({"CreateTexture2D({1024, 1024, 1, 1, 28, 1, 0, 0, 40, 0, 0}, null) = texture#1",
                          "CreateRenderTargetView(texture#1, {28, 4, 0}) = targetView#1",
                          "RSSetViewports(1, [{0, 0, 1024, 1024, 0, 1}])"}));
}

TEST_F(VideoMemoryCalls, MakeTheShadersAndThenTheLayoutOfTheVertexShader) {
    const auto made = callsFrom("CreateVertexShader", 3);
    ASSERT_EQ(made.size(), 3U);
    const auto bytecode = made[0].substr(std::string("CreateVertexShader(").size(), 16);
    EXPECT_EQ(made[0], "CreateVertexShader(" + bytecode + ", null) = vertexShader#1");
    EXPECT_THAT(made[1],
                testing::MatchesRegex("CreatePixelShader\\(................, null\\) = pixelShader#1"));
    EXPECT_EQ(made[2],
              "CreateInputLayout([{POSITION {0, 6, 0, 0, 0, 0}}, {TEXCOORD {0, 16, 0, 12, 0, 0}}], " +
                  bytecode + ") = inputLayout#1");
}

TEST_F(VideoMemoryCalls, MakeVerticesDepthIndicesAndSamplerInThisOrder) {
    const std::vector<float> vertices = {-1, -1, 1, 0, 1, -1, 1, 1, 0, 0, 1, 1, 1, 1, 0, 1, -1, 1, 1, 1};
    const std::vector<std::uint32_t> indices = {0, 1, 2, 0, 2, 3};
    EXPECT_THAT(
        callsFrom("CreateBuffer", 7),
        ElementsAreArray({
            "CreateBuffer({80, 0, 1, 0, 0, 0}, " + markOf(vertices) + ") = buffer#1",
            std::string("CreateTexture2D({1024, 1024, 1, 1, 45, 1, 0, 0, 64, 0, 0}, null) = texture#2"),
            std::string("CreateDepthStencilState({{1, 1, 2, 1, 255, 255}, {1, 7, 1, 8}, {1, 8, 1, 8}}) = "
                        "depthState#1"),
            std::string("OMSetDepthStencilState(depthState#1, 1)"),
            std::string("CreateDepthStencilView(texture#2, {45, 5, 0, 0, 0}) = depthView#1"),
            "CreateBuffer({24, 0, 2, 0, 0, 0}, " + markOf(indices) + ") = buffer#2",
            std::string(
                "CreateSamplerState({21, 1, 1, 1, 0, 1, 8, 0, 0, 0, 0, 0, 3.40282347e+38}) = sampler#1"),
        }));
}

TEST_F(VideoMemoryCalls, GiveTheDepthViewTheDimensionOfAMultisampledTexture) {
    EXPECT_THAT(calls(),
                testing::Contains("CreateDepthStencilView(texture#2, {45, 5, 0, 0, 0}) = depthView#1"));
}

TEST_F(VideoMemoryCalls, MakeAllSurfacesBeforeTheFirstIsWritten) {
    EXPECT_THAT(
        callsFrom("CreateTexture2D(" + surface, 5),
        ElementsAreArray({"CreateTexture2D(" + surface + ", null) = texture#3",
                          std::string("CreateShaderResourceView(texture#3, {28, 4, 0, 1}) = resourceView#1"),
                          "CreateTexture2D(" + surface + ", null) = texture#4",
                          std::string("CreateShaderResourceView(texture#4, {28, 4, 0, 1}) = resourceView#2"),
                          std::string("GetDeviceRemovedReason()")}));
}

TEST_F(VideoMemoryCalls, WriteDrawAndReadBackOneSurfaceAfterTheOther) {
    const auto marks = imageMarks(2);
    Lines expected = {"GetDeviceRemovedReason()",
                      "UpdateSubresource(texture#3, 0, null, " + marks[0] + ", 4096, 0)"};
    std::ranges::copy(drawCalls("resourceView#1"), std::back_inserter(expected));
    std::ranges::copy(readBackCalls("texture#3", "texture#5", "texture#6"), std::back_inserter(expected));
    expected.emplace_back("GetDeviceRemovedReason()");
    expected.push_back("UpdateSubresource(texture#4, 0, null, " + marks[1] + ", 4096, 0)");
    std::ranges::copy(drawCalls("resourceView#2"), std::back_inserter(expected));
    std::ranges::copy(readBackCalls("texture#4", "texture#7", "texture#8"), std::back_inserter(expected));

    auto made = callsFrom("CreateShaderResourceView(texture#4", 1 + expected.size());
    ASSERT_FALSE(made.empty());
    made.erase(made.begin());
    EXPECT_THAT(made, ElementsAreArray(expected));
}

TEST_F(VideoMemoryCalls, ReadBackTheSurfaceItselfAndNotWhatWasResolved) {
    EXPECT_THAT(calls(), testing::Contains("CopyResource(texture#6, texture#3)"));
}

TEST_F(VideoMemoryCalls, EndWithTheResetAndTheNextDevice) {
    const auto all = calls();
    ASSERT_GE(all.size(), 4U);
    EXPECT_THAT(Lines(all.end() - 4, all.end()),
                ElementsAreArray({"Unmap(texture#8, 0)", "ClearState()", "Flush()",
                                  "D3D11CreateDevice(0, null, 32, [45056], 1, 7, null)"}));
}

TEST_F(VideoMemoryCalls, AreAllThatReachTheDevice) {
    // Target 3, shaders 3, vertices 1, depth 4, indices 1, sampler 1, surfaces 4; a surface takes 22.
    EXPECT_EQ(calls().size(), 1U + 3 + 3 + 1 + 4 + 1 + 1 + 2 * 2 + 2 * 22 + 3);
}

TEST(VideoMemoryImages, AreTheSameInEveryRunAndInTheSameOrder) {
    CardSetup setup;
    setup.freeMemory = 21 * mebibyte;
    const auto marks = imageMarks(5);
    for (int run = 0; run < 2; ++run) {
        CardUnderTest card(setup);
        Dx11VideoMemoryTest test;
        ASSERT_EQ(card.run(test), core::TestResult::Passed);
        Lines written;
        for (const auto& line : card.log->take()) {
            if (line.starts_with("UpdateSubresource")) {
                written.push_back(line.substr(line.find("null, ") + 6, 16));
            }
        }
        EXPECT_THAT(written, ElementsAreArray(marks)) << "run " << run;
    }
}

} // namespace
} // namespace vexil::tests
