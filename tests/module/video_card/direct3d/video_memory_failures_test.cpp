#include "module/video_card/direct3d/video_memory_test.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// What becomes of a run when something goes wrong on the device: result, messages and progress, in their
// order.
namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::Dx11VideoMemoryTest;
using simulated::Direct3DFault;
using testing::ElementsAreArray;
using Kind = Direct3DFault::Kind;
using Events = std::vector<std::string>;

constexpr std::uint64_t mebibyte = 1 << 20;
constexpr std::uint32_t eFail = 0x80004005;
constexpr std::uint32_t outOfMemory = 0x8007000E;
constexpr std::uint32_t removed = 0x887A0005;

Direct3DFault failingCall(const std::string& call, std::uint32_t number = 1, std::uint32_t result = eFail) {
    return {Kind::failingCall, number, call, 0, 0, result};
}

struct Outcome {
    std::uint8_t result = 0;
    Events events;
    std::vector<std::string> calls;
};

/// Whatever ended a run, the last that the old device sees is one reset, and then a new one is made.
void expectOneReset(const std::vector<std::string>& calls) {
    ASSERT_GE(calls.size(), 3U);
    EXPECT_THAT(std::vector(calls.end() - 3, calls.end()),
                testing::ElementsAre("ClearState()", "Flush()",
                                     "D3D11CreateDevice(0, null, 32, [45056], 1, 7, null)"));
    EXPECT_EQ(std::ranges::count(calls, "ClearState()"), 1);
    const auto flushes = std::ranges::count(calls, "Flush()");
    const auto drawings = std::ranges::count(calls, "DrawIndexed(6, 0, 0)");
    EXPECT_EQ(flushes, drawings + 1) << "one for each drawing, and that of the reset";
}

/// A run over `surfaces` surfaces of a card with one fault. Whatever happened, the card must have a new
/// device.
Outcome runWith(const Direct3DFault& fault, std::uint64_t surfaces = 8) {
    CardSetup setup;
    setup.freeMemory = surfaces * 4 * mebibyte;
    setup.direct3d.faults = {fault};
    CardUnderTest card(setup);
    const auto device = card.device->dx11Context().device;
    Dx11VideoMemoryTest test;
    Outcome outcome{card.run(test), card.reporter.events, card.log->take()};
    EXPECT_NE(card.device->dx11Context().device, device);
    EXPECT_EQ(device.use_count(), 1) << "something of the run still holds the old device";
    expectOneReset(outcome.calls);
    return outcome;
}

const Events couldNotBeCompleted = {"progress 0", "progress 100", "report 0 TEST_COULD_NOT_BE_COMPLETED"};
const Events couldNotAllocate = {"progress 0", "progress 100",
                                 "report 0 A_VIDEO_CARD_COULD_NOT_ALLOCATE_MEMORY"};
const Events couldNotExecuteOnFirst = {"progress 0", "progress 100",
                                       "report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"};

struct PipelineRow {
    const char* call;
    std::uint32_t number;
};

class VideoMemoryPipeline : public testing::TestWithParam<PipelineRow> {};

INSTANTIATE_TEST_SUITE_P(
    EveryObject, VideoMemoryPipeline,
    testing::Values(PipelineRow{"CreateTexture2D", 1}, PipelineRow{"CreateRenderTargetView", 1},
                    PipelineRow{"CreateVertexShader", 1}, PipelineRow{"CreatePixelShader", 1},
                    PipelineRow{"CreateInputLayout", 1}, PipelineRow{"CreateBuffer", 1},
                    PipelineRow{"CreateTexture2D", 2}, PipelineRow{"CreateDepthStencilState", 1},
                    PipelineRow{"CreateDepthStencilView", 1}, PipelineRow{"CreateBuffer", 2},
                    PipelineRow{"CreateSamplerState", 1}),
    [](const auto& row) { return row.param.call + std::to_string(row.param.number); });

TEST_P(VideoMemoryPipeline, ThatCannotBeMadeLeavesTheRunNotCompleted) {
    const auto outcome = runWith(failingCall(GetParam().call, GetParam().number));
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray(couldNotBeCompleted));
}

TEST_P(VideoMemoryPipeline, IsNotGoneOnWithAfterItsFirstFailure) {
    const auto outcome = runWith(failingCall(GetParam().call, GetParam().number));
    // Behind the failure come only the reset and the next device.
    ASSERT_GE(outcome.calls.size(), 3U);
    const auto lastOfRun = outcome.calls.at(outcome.calls.size() - 4);
    static const std::map<std::string, std::string> lastBefore = {
        {"CreateTexture2D1", "GetDeviceRemovedReason"},
        {"CreateRenderTargetView1", "CreateTexture2D"},
        {"CreateVertexShader1", "RSSetViewports"},
        {"CreatePixelShader1", "CreateVertexShader"},
        {"CreateInputLayout1", "CreatePixelShader"},
        {"CreateBuffer1", "CreateInputLayout"},
        {"CreateTexture2D2", "CreateBuffer"},
        {"CreateDepthStencilState1", "CreateTexture2D"},
        {"CreateDepthStencilView1", "OMSetDepthStencil"},
        {"CreateBuffer2", "CreateDepthStencilView"},
        {"CreateSamplerState1", "CreateBuffer"},
    };
    EXPECT_THAT(lastOfRun,
                testing::StartsWith(lastBefore.at(GetParam().call + std::to_string(GetParam().number))));
}

TEST(VideoMemoryFailure, ResetsTheCardOnceWhenAUserOrTheSystemStopsTheRun) {
    for (const bool byUser : {true, false}) {
        CardSetup setup;
        setup.freeMemory = 40 * mebibyte;
        CardUnderTest card(setup);
        card.reporter.onProgress = [&](std::uint8_t percent) {
            card.cancel = byUser && percent >= 20 ? 1 : 0;
            card.arguments.systemEvents->flags = !byUser && percent >= 20 ? 1 : 0;
        };
        const auto device = card.device->dx11Context().device;
        Dx11VideoMemoryTest test;
        EXPECT_EQ(card.run(test), TestResult::NotCompleted);
        EXPECT_NE(card.device->dx11Context().device, device);
        expectOneReset(card.log->take());
    }
}

TEST(VideoMemoryFailure, OutOfMemoryOnTheFifthSurfaceTestsFour) {
    const auto outcome = runWith({Kind::surfaceAllocation, 5, "", 0, 0, outOfMemory});
    EXPECT_EQ(outcome.result, TestResult::Passed);
    EXPECT_THAT(outcome.events, ElementsAreArray({"progress 0", "progress 25", "progress 50", "progress 75",
                                                  "progress 100", "report 0 TOTAL_SURFACES_TESTED: 4/4"}));
}

TEST(VideoMemoryFailure, OutOfMemoryOnTheFirstSurfaceCouldNotAllocate) {
    const auto outcome = runWith({Kind::surfaceAllocation, 1, "", 0, 0, outOfMemory});
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray(couldNotAllocate));
}

TEST(VideoMemoryFailure, AnyOtherCodeOnTheFifthSurfaceCouldNotAllocate) {
    for (const auto code : {eFail, removed, 0x80070057U}) {
        const auto outcome = runWith({Kind::surfaceAllocation, 5, "", 0, 0, code});
        EXPECT_EQ(outcome.result, TestResult::NotCompleted);
        EXPECT_THAT(outcome.events, ElementsAreArray(couldNotAllocate));
    }
}

TEST(VideoMemoryFailure, OutOfMemoryForTheViewOfASurfaceIsNoFullMemory) {
    const auto outcome = runWith(failingCall("CreateShaderResourceView", 5, outOfMemory));
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray(couldNotAllocate));
}

TEST(VideoMemoryFailure, AMemoryBudgetEndsTheListOfSurfaces) {
    CardSetup setup;
    setup.freeMemory = 100 * mebibyte;
    setup.direct3d.memoryBudget = 21 * mebibyte; // 8 MiB of it for the target and the depth
    CardUnderTest card(setup);
    Dx11VideoMemoryTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_EQ(card.reporter.events.back(), "report 0 TOTAL_SURFACES_TESTED: 3/3");
}

TEST(VideoMemoryFailure, AFlippedByteFailsWithoutAMessageAndLeavesTheProgress) {
    const auto outcome = runWith({Kind::changedByte, 3, "", 12345, 0x10, 0});
    EXPECT_EQ(outcome.result, TestResult::Failed);
    EXPECT_THAT(outcome.events, ElementsAreArray({"progress 0", "progress 12", "progress 25"}));
}

TEST(VideoMemoryFailure, EveryByteOfASurfaceIsCompared) {
    for (const std::uint32_t offset : {0U, 4095U, 4096U, 2'000'003U, 0x3FFFFFU}) {
        EXPECT_EQ(runWith({Kind::changedByte, 1, "", offset, 1, 0}, 1).result, TestResult::Failed) << offset;
    }
}

TEST(VideoMemoryFailure, ADeviceThatIsGoneFromTheStartCouldNotBeCompleted) {
    const auto outcome = runWith({Kind::deviceRemoved, 0, "", 0, 0, removed});
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray(couldNotBeCompleted));
    EXPECT_EQ(outcome.calls.size(), 4U) << "the question, the reset and the next device";
}

TEST(VideoMemoryFailure, ADeviceRemovedAtASurfaceCouldNotBeCompleted) {
    const auto outcome = runWith({Kind::deviceRemoved, 3, "", 0, 0, removed});
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray({"progress 0", "progress 12", "progress 25", "progress 100",
                                                  "report 0 TEST_COULD_NOT_BE_COMPLETED"}));
}

TEST(VideoMemoryFailure, AFailingMapCouldNotExecute) {
    const auto outcome = runWith(failingCall("Map", 2));
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray({"progress 0", "progress 12", "progress 100",
                                                  "report 0 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"}));
}

TEST(VideoMemoryFailure, AMissingResolveSupportCouldNotExecute) {
    const auto outcome = runWith({Kind::noResolveSupport, 1, "", 0, 0, 0});
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray(couldNotExecuteOnFirst));
}

TEST(VideoMemoryFailure, AnUnknownFormatSupportCouldNotExecute) {
    const auto outcome = runWith(failingCall("CheckFormatSupport"));
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events, ElementsAreArray(couldNotExecuteOnFirst));
}

TEST(VideoMemoryFailure, ATemporaryOrStagingTextureThatCannotBeMadeCouldNotExecute) {
    // Target, depth and one surface come before them.
    for (const std::uint32_t number : {4U, 5U}) {
        const auto outcome = runWith(failingCall("CreateTexture2D", number), 1);
        EXPECT_EQ(outcome.result, TestResult::NotCompleted) << number;
        EXPECT_THAT(outcome.events, ElementsAreArray(couldNotExecuteOnFirst)) << number;
    }
}

} // namespace
} // namespace vexil::tests
