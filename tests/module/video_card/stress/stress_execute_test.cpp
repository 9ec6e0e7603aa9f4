#include "stress_test_under_test.h"

#include "core/test_result.h"
#include "support/plain_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// What a run does before and behind its path, and what the host hears of it.
namespace vexil::tests {
namespace {

using core::TestResult;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string systemEvent =
    "report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";

TEST(StressTest, IsTwoTestsOfOneClass) {
    const module::video_card::D3D11StressTest window(false);
    EXPECT_EQ(window.id(), 5);
    EXPECT_EQ(window.descriptor().name, "STRESS_TEST");
    EXPECT_EQ(window.descriptor().tooltip, "STRESS_TEST_TOOL_TIP");
    EXPECT_EQ(window.descriptor().group, "EXTENDED_TESTS");
    EXPECT_EQ(window.descriptor().groupRank, 2);
    const module::video_card::D3D11StressTest wireframe(true);
    EXPECT_EQ(wireframe.id(), 21);
    EXPECT_EQ(wireframe.descriptor().name, "WIREFRAME_STRESS_TEST");
    EXPECT_EQ(wireframe.descriptor().tooltip, "WIREFRAME_STRESS_TEST_DESCRIPTION");
    EXPECT_EQ(wireframe.descriptor().group, "EXTENDED_TESTS");
}

TEST(StressTest, ListsFiveParametersInAWindowAndOneWithoutIt) {
    const auto keysOf = [](bool wireframe) {
        std::vector<std::string> keys;
        const module::video_card::D3D11StressTest test(wireframe);
        for (const auto& entry : test.parameters()) {
            keys.push_back(entry.key);
        }
        return keys;
    };
    EXPECT_THAT(keysOf(false), ElementsAre("DURATION", "BURN_IN", "INFINITE", "LOAD", "WINDOW_SIZE"));
    EXPECT_THAT(keysOf(true), ElementsAre("DURATION"));
}

TEST(StressTest, AnnouncesItsDurationInWholeMinutes) {
    for (const bool wireframe : {false, true}) {
        StressTestUnderTest stress(wireframe);
        EXPECT_EQ(stress.test.expectedDurationMinutes(), 5U) << "the default";
        stress.set("DURATION", "0.5");
        EXPECT_EQ(stress.test.expectedDurationMinutes(), 0U);
        stress.set("DURATION", "1.99");
        EXPECT_EQ(stress.test.expectedDurationMinutes(), 1U);
        stress.set("DURATION", "9999");
        EXPECT_EQ(stress.test.expectedDurationMinutes(), 9999U);
        EXPECT_FALSE(stress.test.requiresExclusiveRun());
    }
}

struct SoftwareRow {
    std::uint32_t vendor;
    std::uint32_t device;
    bool supported;
};

TEST(StressTestSupport, IsRefusedToTheSoftwareAdapterOnly) {
    for (const auto& row : {SoftwareRow{5140, 140, false}, SoftwareRow{5140, 141, true},
                            SoftwareRow{5141, 140, true}, SoftwareRow{0x10DE, 0x2503, true}}) {
        StressTestUnderTest stress(row.vendor % 2 == 0);
        auto& desc = stress.card.device->lock().slot()->adapterInfo.desc;
        desc.VendorId = row.vendor;
        desc.DeviceId = row.device;
        EXPECT_EQ(stress.test.isSupported(stress.card.device.get(), stress.card.device), row.supported)
            << row.vendor << ", " << row.device;
    }
}

TEST(StressTestSupport, NeedsACardWithDirect3D) {
    StressTestUnderTest stress(false);
    const auto other = std::make_shared<PlainDevice>("other");
    EXPECT_FALSE(stress.test.isSupported(other.get(), other));
    EXPECT_FALSE(stress.test.isSupported(nullptr, nullptr));
    stress.card.device->lock().slot().reset();
    EXPECT_FALSE(stress.test.isSupported(stress.card.device.get(), stress.card.device));
}

class EitherStressTest : public testing::TestWithParam<bool> {
protected:
    StressTestUnderTest stress_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Of, EitherStressTest, testing::Bool(),
                         [](const auto& wireframe) { return wireframe.param ? "Wireframe" : "Window"; });

TEST_P(EitherStressTest, LooksForAStopBeforeItLooksForTheCard) {
    stress_.card.arguments.device.reset();
    stress_.card.cancel = 1;
    EXPECT_EQ(stress_.test.execute(stress_.card.arguments), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.events, IsEmpty());
    stress_.card.arguments.systemEvents->flags = 2;
    EXPECT_EQ(stress_.test.execute(stress_.card.arguments), TestResult::NotCompleted);
    EXPECT_THAT(stress_.reporter.events, ElementsAre(systemEvent, "progress 100"));
    EXPECT_EQ(stress_.reporter.questions, 0);
}

TEST_P(EitherStressTest, SaysNothingOfACardThatIsGoneOrNone) {
    stress_.card.arguments.device.reset();
    EXPECT_EQ(stress_.test.execute(stress_.card.arguments), TestResult::DeviceUnavailable);
    const auto other = std::make_shared<PlainDevice>("other");
    stress_.card.arguments.device = other;
    EXPECT_EQ(stress_.test.execute(stress_.card.arguments), TestResult::DeviceUnavailable);
    EXPECT_THAT(stress_.reporter.events, IsEmpty());
}

TEST_P(EitherStressTest, IsNotSupportedWithoutDirect3DAndSaysNothing) {
    stress_.card.device->lock().slot().reset();
    EXPECT_EQ(stress_.test.execute(stress_.card.arguments), TestResult::NotSupported);
    EXPECT_THAT(stress_.reporter.events, IsEmpty());
}

TEST_P(EitherStressTest, LeavesTheCardWithANewDevice) {
    stress_.makesWireframe = false;
    stress_.window.makesRenderer = false;
    const auto before = stress_.card.device->dx11Context().device;
    EXPECT_EQ(stress_.run(), TestResult::NotCompleted);
    EXPECT_NE(stress_.card.device->dx11Context().device, before);
    EXPECT_EQ(before.use_count(), 1) << "something of the run still holds the old device";
}

TEST(StressBurnIn, SetsTheLoadAndTheDeadline) {
    StressTestUnderTest stress(false);
    stress.window.makesRenderer = false;
    stress.set("DURATION", "0.5");
    stress.set("BURN_IN", "TRUE");
    stress.set("LOAD", "40");
    stress.timer.tick = 77;
    EXPECT_EQ(stress.run(), TestResult::NotCompleted);
    const auto& controller = stress.test.loadController();
    EXPECT_TRUE(controller.burnInActive);
    EXPECT_DOUBLE_EQ(controller.loadFraction, 0.4);
    EXPECT_FALSE(controller.deadline.infinite);
    EXPECT_EQ(controller.deadline.seconds, 30U);
    EXPECT_EQ(controller.deadline.startTick, 77U);
}

TEST(StressBurnIn, ThatIsInfiniteHasNoDeadline) {
    StressTestUnderTest stress(false);
    stress.window.makesRenderer = false;
    stress.set("BURN_IN", "TRUE");
    stress.set("INFINITE", "TRUE");
    stress.timer.tick = 77;
    EXPECT_EQ(stress.run(), TestResult::NotCompleted);
    const auto& controller = stress.test.loadController();
    EXPECT_TRUE(controller.deadline.infinite);
    EXPECT_EQ(controller.deadline.seconds, 0U);
    EXPECT_EQ(controller.deadline.startTick, 0U);
    EXPECT_EQ(controller.loadFraction, 1.0);
}

TEST(StressBurnIn, IsNeededForLoadAndRepetitionToTakeEffect) {
    StressTestUnderTest stress(false);
    stress.window.makesRenderer = false;
    stress.set("INFINITE", "TRUE");
    stress.set("LOAD", "50");
    EXPECT_EQ(stress.run(), TestResult::NotCompleted);
    const auto& controller = stress.test.loadController();
    EXPECT_FALSE(controller.burnInActive);
    EXPECT_EQ(controller.loadFraction, 1.0);
    EXPECT_FALSE(controller.deadline.infinite);
}

TEST(StressBurnIn, IsNeverClearedAsItStandsWhileTheOtherFieldsAreSetAgain) {
    StressTestUnderTest stress(false);
    stress.window.makesRenderer = false;
    stress.set("BURN_IN", "TRUE");
    stress.set("INFINITE", "TRUE");
    stress.set("LOAD", "50");
    EXPECT_EQ(stress.run(), TestResult::NotCompleted);
    stress.set("INFINITE", "FALSE");
    stress.set("LOAD", "60");
    EXPECT_EQ(stress.run(), TestResult::NotCompleted);
    EXPECT_DOUBLE_EQ(stress.test.loadController().loadFraction, 0.6);
    EXPECT_FALSE(stress.test.loadController().deadline.infinite);
    EXPECT_EQ(stress.test.loadController().deadline.seconds, 300U);
    stress.set("BURN_IN", "FALSE");
    EXPECT_EQ(stress.run(), TestResult::NotCompleted);
    EXPECT_TRUE(stress.test.loadController().burnInActive);
}

} // namespace
} // namespace vexil::tests
