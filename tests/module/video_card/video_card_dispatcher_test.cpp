#include "module/video_card/video_card_dispatcher.h"
#include "support/plain_test.h"

#include <gtest/gtest.h>

namespace vexil::module::video_card {
namespace {

using core::TestExecution;

class VideoCardDispatcherTest : public testing::Test {
protected:
    std::shared_ptr<TestExecution> run(core::Test& test, const std::shared_ptr<core::Device>& device) {
        return std::make_shared<TestExecution>(TestExecution{device, TestExecution::ownDevice, &test});
    }

    VideoCardDispatcher dispatcher_{2, [](std::uint64_t) {}};
    std::shared_ptr<core::Device> a_ = std::make_shared<tests::PlainDevice>("0100");
    std::shared_ptr<core::Device> b_ = std::make_shared<tests::PlainDevice>("0200");
    tests::PlainTest memory_{1};
    tests::PlainTest stress_{5};
    tests::PlainTest wireframe_{21};
};

TEST_F(VideoCardDispatcherTest, RunsNoTwoStressTestsAtOnceEvenOnTwoCards) {
    dispatcher_.started(run(stress_, a_));
    EXPECT_FALSE(dispatcher_.canStart(run(stress_, b_)));
    EXPECT_FALSE(dispatcher_.canStart(run(wireframe_, b_)));
    dispatcher_.finished(run(stress_, a_));
    EXPECT_TRUE(dispatcher_.canStart(run(wireframe_, b_)));
    dispatcher_.started(run(wireframe_, a_));
    EXPECT_FALSE(dispatcher_.canStart(run(stress_, b_)));
}

TEST_F(VideoCardDispatcherTest, HoldsNoOtherTestBackForAStressTestOnAnotherCard) {
    dispatcher_.started(run(stress_, a_));
    EXPECT_TRUE(dispatcher_.canStart(run(memory_, b_)));
    EXPECT_FALSE(dispatcher_.canStart(run(memory_, a_))) << "its own card is busy";
}

TEST_F(VideoCardDispatcherTest, KeepsOneStressTestOnlyEvenForADeviceThatIsGone) {
    dispatcher_.started(run(stress_, nullptr));
    EXPECT_FALSE(dispatcher_.canStart(run(stress_, a_)));
    EXPECT_TRUE(dispatcher_.canStart(run(memory_, a_)));
}

TEST_F(VideoCardDispatcherTest, KeepsTheStressTestRunningWhenAnotherTestEnds) {
    dispatcher_.started(run(stress_, a_));
    dispatcher_.started(run(memory_, b_));
    dispatcher_.finished(run(memory_, b_));
    EXPECT_FALSE(dispatcher_.canStart(run(wireframe_, b_)));
}

TEST_F(VideoCardDispatcherTest, TakesNoOtherIdForAStressTest) {
    for (const std::int32_t id : {1, 3, 4, 6, 20, 22, 90}) {
        tests::PlainTest other(id);
        dispatcher_.started(run(other, a_));
        EXPECT_TRUE(dispatcher_.canStart(run(stress_, b_))) << id;
        dispatcher_.finished(run(other, a_));
    }
}

TEST_F(VideoCardDispatcherTest, KeepsTheRulesOfTheGeneralDispatcher) {
    dispatcher_.started(run(memory_, a_));
    EXPECT_FALSE(dispatcher_.canStart(run(stress_, a_)));
    dispatcher_.finished(run(memory_, a_));
    EXPECT_TRUE(dispatcher_.canStart(run(stress_, a_)));
}

} // namespace
} // namespace vexil::module::video_card
