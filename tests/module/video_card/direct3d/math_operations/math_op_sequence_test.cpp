#include "module/video_card/direct3d/math_operations/math_op_test.h"
#include "support/card_under_test.h"
#include "support/plain_test.h"
#include "support/staged_math_op_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// The way of a run through its stages, and what can end it.
namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::Device;
using module::video_card::DirectComputeMathOpAdvancedTest;
using module::video_card::DirectComputeMathOpStandardTest;
using module::video_card::DirectComputeMathOpTest;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string systemEventReport =
    "report 0 TEST_ABORTED_BECAUSE_A_SYSTEM_EVENT_THAT_COULD_COMPROMISE_THE_OUTCOME_HAS_HAPPENED";

TEST(MathOpSequence, RunsIntegersFloatsAndDoublesAndSaysNothing) {
    CardUnderTest card;
    StagedTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
    EXPECT_THAT(test.run, ElementsAre("integer", "float", "double"));
    EXPECT_THAT(card.reporter.events, IsEmpty());
}

TEST(MathOpSequence, EndsWithTheResultOfAStageThatDidNotPassAndANewDevice) {
    for (const std::size_t stage : {0U, 1U, 2U}) {
        for (const auto result : {TestResult::Failed, TestResult::NotCompleted, TestResult::CleanupFailed}) {
            CardUnderTest card;
            const auto device = card.device->dx11Context().device;
            StagedTest test;
            test.stages[stage] = [result] { return result; };
            EXPECT_EQ(card.run(test), result);
            EXPECT_EQ(test.run.size(), stage + 1);
            EXPECT_THAT(card.reporter.events, IsEmpty());
            EXPECT_THAT(card.log->take(),
                        ElementsAre("ClearState()", "Flush()", testing::StartsWith("D3D11Create")));
            EXPECT_NE(card.device->dx11Context().device, device);
        }
    }
}

TEST(MathOpSequence, SeesACancelBehindTheStageInWhichItCame) {
    for (const std::size_t stage : {0U, 1U, 2U}) {
        CardUnderTest card;
        StagedTest test;
        test.stages[stage] = [&] {
            card.cancel = 1;
            return TestResult::Passed;
        };
        EXPECT_EQ(card.run(test), TestResult::NotCompleted);
        EXPECT_EQ(test.run.size(), stage + 1);
        EXPECT_THAT(card.reporter.events, IsEmpty());
    }
}

TEST(MathOpSequence, ReportsASystemEventBeforeItsProgress) {
    for (const std::size_t stage : {0U, 1U, 2U}) {
        CardUnderTest card;
        StagedTest test;
        test.stages[stage] = [&] {
            card.arguments.systemEvents->flags = 0x80;
            return TestResult::Passed;
        };
        EXPECT_EQ(card.run(test), TestResult::NotCompleted);
        EXPECT_EQ(test.run.size(), stage + 1);
        EXPECT_THAT(card.reporter.events, ElementsAre(systemEventReport, "progress 100"));
    }
}

TEST(MathOpSequence, StopsBeforeItLooksAtTheDevice) {
    CardUnderTest card;
    StagedTest test;
    card.cancel = 1;
    card.arguments.device.reset();
    EXPECT_EQ(card.run(test), TestResult::NotCompleted);
    EXPECT_THAT(card.reporter.events, IsEmpty());
    EXPECT_THAT(card.log->take(), IsEmpty()) << "nothing was begun that a reset would have to end";
}

TEST(MathOpSequence, DoesNotReachADeviceThatIsGoneOrNoVideoCard) {
    CardUnderTest card;
    StagedTest test;
    const auto other = std::make_shared<PlainDevice>("other");
    card.arguments.device = other;
    EXPECT_EQ(card.run(test), TestResult::DeviceUnavailable);
    card.arguments.device.reset();
    EXPECT_EQ(card.run(test), TestResult::DeviceUnavailable);
    EXPECT_THAT(card.reporter.events, IsEmpty());
}

TEST(MathOpSequence, IsNotSupportedWithoutADirect3DDevice) {
    CardUnderTest card;
    card.device->lock().slot().reset();
    StagedTest test;
    EXPECT_EQ(card.run(test), TestResult::NotSupported);
    EXPECT_THAT(test.run, IsEmpty());
    EXPECT_THAT(card.reporter.events,
                ElementsAre("progress 100", "report 0 TEST_NOT_SUPPORTED_IN_THIS_DEVICE"));
}

TEST(MathOpSequence, RunsWithoutSystemEventsToLookAt) {
    CardUnderTest card;
    card.arguments.systemEvents.reset();
    StagedTest test;
    EXPECT_EQ(card.run(test), TestResult::Passed);
}

/// Both tests, each with the dispatches of its stages.
template <typename TestClass>
struct Stages : testing::Test {
    /// The calls that reached the device, of one stage run alone.
    static std::vector<std::string>
    runAlone(CardUnderTest& card, std::uint8_t expected,
             std::uint8_t (DirectComputeMathOpTest::*stage)(const core::TestRunArguments&,
                                                            const Device::Direct3DLock&)) {
        TestClass test;
        DirectComputeMathOpTest& base = test;
        const auto access = card.device->lock();
        EXPECT_EQ((base.*stage)(card.arguments, access), expected);
        return card.log->take();
    }
};
using BothTests = testing::Types<DirectComputeMathOpStandardTest, DirectComputeMathOpAdvancedTest>;
TYPED_TEST_SUITE(Stages, BothTests);

TYPED_TEST(Stages, RunToTheirEndBeforeTheyLookForAStop) {
    for (const auto stage :
         {&DirectComputeMathOpTest::runIntegerStage, &DirectComputeMathOpTest::runFloatStage,
          &DirectComputeMathOpTest::runDoubleStage}) {
        CardUnderTest card;
        card.cancel = 1;
        const auto calls = this->runAlone(card, TestResult::NotCompleted, stage);
        EXPECT_THAT(calls, testing::Contains(testing::StartsWith("Dispatch(")));
        EXPECT_THAT(calls.back(), testing::StartsWith("Unmap("));
        EXPECT_THAT(card.reporter.events, IsEmpty());
    }
}

TYPED_TEST(Stages, ReportASystemEventOnce) {
    CardUnderTest card;
    card.arguments.systemEvents->flags = 1;
    this->runAlone(card, TestResult::NotCompleted, &DirectComputeMathOpTest::runIntegerStage);
    EXPECT_THAT(card.reporter.events, ElementsAre(systemEventReport, "progress 100"));
}

TYPED_TEST(Stages, OfATestTakeAMinuteAndRunBesideOthers) {
    TypeParam test;
    EXPECT_EQ(test.expectedDurationMinutes(), 1U);
    EXPECT_FALSE(test.requiresExclusiveRun());
    EXPECT_TRUE(test.parameters().empty());
}

TYPED_TEST(Stages, AreOfferedForACardWithDirect3DThatIsNoSoftwareAdapter) {
    TypeParam test;
    CardUnderTest card;
    EXPECT_TRUE(test.isSupported(card.device.get(), card.device));

    auto context = card.device->dx11Context();
    const auto supports = [&](UINT vendor, UINT device) {
        context.adapterInfo.desc.VendorId = vendor;
        context.adapterInfo.desc.DeviceId = device;
        card.device->setDirect3D(context);
        return test.isSupported(card.device.get(), nullptr);
    };
    EXPECT_FALSE(supports(5140, 140));
    EXPECT_TRUE(supports(5140, 141));
    EXPECT_TRUE(supports(5141, 140));

    card.device->lock().slot().reset();
    EXPECT_FALSE(test.isSupported(card.device.get(), card.device));
    const auto other = std::make_shared<PlainDevice>("other");
    EXPECT_FALSE(test.isSupported(other.get(), other));
    EXPECT_FALSE(test.isSupported(nullptr, nullptr));
}

TEST(MathOpTests, HaveTheirCatalogueEntries) {
    EXPECT_EQ(DirectComputeMathOpStandardTest().id(), 17);
    EXPECT_EQ(DirectComputeMathOpStandardTest().descriptor().name,
              "DIRECTCOMPUTE_STANDARD_MATHEMATICAL_OPERATIONS_TEST");
    EXPECT_EQ(DirectComputeMathOpAdvancedTest().id(), 18);
    EXPECT_EQ(DirectComputeMathOpAdvancedTest().descriptor().name,
              "DIRECTCOMPUTE_ADVANCED_MATHEMATICAL_OPERATIONS_TEST");
}

} // namespace
} // namespace vexil::tests
