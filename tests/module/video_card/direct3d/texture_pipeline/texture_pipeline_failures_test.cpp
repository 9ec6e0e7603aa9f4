#include "module/video_card/direct3d/texture_pipeline/texture_pipeline_test.h"

#include "support/card_under_test.h"
#include "support/plain_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <utility>
#include <vector>

// What can end a run early: result, messages and progress, in their order.
namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::Dx11TexturePipelineTest;
using simulated::Direct3DFault;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Events = std::vector<std::string>;
using Kind = Direct3DFault::Kind;

const std::string internalError =
    "report 0 AN_INTERNAL_ERROR_OCCURRED._|THIS_DOES_NOT_INDICATE_A_FAILURE._|PLEASE_TRY_AGAIN.";
const std::string inconsistency = "report 0 INCONSISTENCY_FOUND_WHILE_COMPARING_IMAGES";
const std::string systemEventReport =
    "report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";

struct Outcome {
    std::uint8_t result = 0;
    Events events;
    std::ptrdiff_t drawings = 0;
};

/// Whatever happened, the card must have a new device and nothing of the old one be left.
Outcome runWith(const Direct3DFault& fault) {
    CardSetup setup;
    setup.direct3d.faults = {fault};
    CardUnderTest card(setup);
    const auto device = card.device->dx11Context().device;
    Dx11TexturePipelineTest test;
    const auto result = card.run(test);
    EXPECT_NE(card.device->dx11Context().device, device);
    EXPECT_EQ(device.use_count(), 1) << "something of the run still holds the old device";
    const auto calls = card.log->take();
    return {result, card.reporter.events, std::ranges::count(calls, "Draw(6, 0)")};
}

Direct3DFault wrongPixel(std::uint32_t drawing, std::uint32_t x, std::uint32_t y, std::uint8_t mask) {
    return {Kind::wrongPixel, drawing, "", (y * 1024 + x) * 4, mask, 0, {}};
}

TEST(TexturePipelineFailure, OfOnePixelInAnyPassIsFoundInThatPass) {
    for (const std::uint32_t drawing : {1U, 2U, 5U}) {
        const auto outcome = runWith(wrongPixel(drawing, 512, 100, 1));
        EXPECT_EQ(outcome.result, TestResult::Failed);
        Events events(drawing - 1, "progress 0");
        events.insert(events.end(), {inconsistency, "progress 100"});
        EXPECT_THAT(outcome.events, ElementsAreArray(events));
        EXPECT_EQ(outcome.drawings, drawing) << "no pass behind it is run";
    }
}

TEST(TexturePipelineFailure, OfAnyPixelIsFound) {
    for (const auto& [x, y] : {std::pair{0U, 0U}, std::pair{1023U, 0U}, std::pair{0U, 1023U},
                               std::pair{1023U, 1023U}, std::pair{700U, 700U}, std::pair{7U, 3U}}) {
        EXPECT_EQ(runWith(wrongPixel(1, x, y, 0x80)).result, TestResult::Failed) << x << ", " << y;
    }
}

TEST(TexturePipelineFailure, OfAMappedPitchWithGapsIsAWrongPicture) {
    const auto outcome = runWith({Kind::mappedPitch, 1, "", 256, 0, 0, {}});
    EXPECT_EQ(outcome.result, TestResult::Failed);
    EXPECT_THAT(outcome.events, ElementsAre(inconsistency, "progress 100"));
}

struct CallRow {
    const char* call;
    std::uint32_t number;
    std::ptrdiff_t passesBefore;
};

class TexturePipelineCall : public testing::TestWithParam<CallRow> {};

INSTANTIATE_TEST_SUITE_P(
    Each, TexturePipelineCall,
    testing::Values(CallRow{"CreateBuffer", 1, 0}, CallRow{"CreateVertexShader", 1, 0},
                    CallRow{"CreatePixelShader", 1, 0}, CallRow{"CreateInputLayout", 1, 0},
                    CallRow{"CreateTexture2D", 1, 0}, CallRow{"CreateRenderTargetView", 1, 0},
                    CallRow{"CreateShaderResourceView", 1, 0}, CallRow{"CreateTexture2D", 2, 0},
                    CallRow{"CreateTexture2D", 3, 0}, CallRow{"CreateShaderResourceView", 2, 0},
                    CallRow{"CreateSamplerState", 1, 0}, CallRow{"Map", 1, 0},
                    CallRow{"CreateTexture2D", 4, 1}, CallRow{"CreateTexture2D", 9, 2},
                    CallRow{"CreateRenderTargetView", 3, 2}, CallRow{"CreateShaderResourceView", 4, 1},
                    CallRow{"CreateSamplerState", 3, 2}, CallRow{"Map", 3, 2}),
    [](const auto& row) { return row.param.call + std::to_string(row.param.number); });

TEST_P(TexturePipelineCall, ThatFailsIsAnInternalErrorAndSaysNothingOfTheCard) {
    const auto& [call, number, passesBefore] = GetParam();
    const auto outcome = runWith({Kind::failingCall, number, call, 0, 0, 0x80004005, {}});
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    Events events(static_cast<std::size_t>(passesBefore), "progress 0");
    events.insert(events.end(), {internalError, "progress 100"});
    EXPECT_THAT(outcome.events, ElementsAreArray(events));
    EXPECT_EQ(outcome.drawings, passesBefore + (std::string(call) == "Map" ? 1 : 0));
}

/// A run in which something happens behind the given pass.
Outcome runUntil(int passes, const std::function<void(CardUnderTest&)>& happen) {
    CardUnderTest card;
    card.reporter.onProgress = [&, done = 0](std::uint8_t) mutable {
        if (++done == passes) {
            happen(card);
        }
    };
    Dx11TexturePipelineTest test;
    const auto result = card.run(test);
    const auto calls = card.log->take();
    return {result, card.reporter.events, std::ranges::count(calls, "Draw(6, 0)")};
}

TEST(TexturePipelineStop, ByACancelSendsNoMessageAndSetsTheProgressOnce) {
    const auto outcome = runUntil(4, [](auto& card) { card.cancel = 1; });
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events,
                ElementsAre("progress 0", "progress 0", "progress 0", "progress 0", "progress 100"));
    EXPECT_EQ(outcome.drawings, 4);
}

TEST(TexturePipelineStop, ByASystemEventIsReportedAndSetsTheProgressTwice) {
    const auto outcome = runUntil(2, [](auto& card) { card.arguments.systemEvents->flags = 0x20; });
    EXPECT_EQ(outcome.result, TestResult::NotCompleted);
    EXPECT_THAT(outcome.events,
                ElementsAre("progress 0", "progress 0", systemEventReport, "progress 100", "progress 100"));
    EXPECT_EQ(outcome.drawings, 2);
}

TEST(TexturePipelineStop, ComesBeforeTheLookAtTheDevice) {
    CardUnderTest card;
    card.arguments.device.reset();
    card.cancel = 1;
    Dx11TexturePipelineTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events, ElementsAre("progress 100"));
    EXPECT_THAT(card.log->take(), IsEmpty());
}

TEST(TexturePipelineStop, BeforeTheRunIsReportedAndSetsTheProgressTwice) {
    CardUnderTest card;
    card.arguments.systemEvents->flags = 1;
    Dx11TexturePipelineTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events, ElementsAre(systemEventReport, "progress 100", "progress 100"));
    EXPECT_THAT(card.log->take(), IsEmpty());
}

TEST(TexturePipelineDevice, IsLockedForTheWholeRun) {
    CardUnderTest card;
    std::vector<std::future<void>> others;
    card.reporter.onProgress = [&](std::uint8_t) {
        others.push_back(std::async(std::launch::async, [&] { const auto lock = card.device->lock(); }));
        EXPECT_EQ(others.back().wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
        card.cancel = 1;
    };
    Dx11TexturePipelineTest test;
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_EQ(others.size(), 2U) << "behind the pass, and with the cancel";
    for (const auto& other : others) {
        EXPECT_EQ(other.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    }
}

TEST(TexturePipelineDevice, ThatIsGoneOrNoVideoCardIsNotReached) {
    CardUnderTest card;
    Dx11TexturePipelineTest test;
    const auto other = std::make_shared<PlainDevice>("other");
    card.arguments.device = other;
    EXPECT_EQ(card.run(test), TestResult::DeviceUnavailable);
    card.arguments.device.reset();
    EXPECT_EQ(card.run(test), TestResult::DeviceUnavailable);
    EXPECT_THAT(card.reporter.events, IsEmpty());
}

TEST(TexturePipelineDevice, WithoutDirect3DIsNotSupportedAndSaysNothing) {
    CardUnderTest card;
    card.device->lock().slot().reset();
    Dx11TexturePipelineTest test;
    EXPECT_EQ(card.run(test), TestResult::NotSupported);
    EXPECT_THAT(card.reporter.events, IsEmpty());
}

} // namespace
} // namespace vexil::tests
