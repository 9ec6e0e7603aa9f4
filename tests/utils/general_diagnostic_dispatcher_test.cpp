#include "support/plain_test.h"
#include "utils/general_diagnostic_dispatcher.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <stdexcept>

namespace vexil::utils {
namespace {

using core::TestExecution;

class DispatcherTest : public testing::Test {
protected:
    std::shared_ptr<TestExecution> run(const std::shared_ptr<core::Device>& device, std::int32_t scope) {
        return std::make_shared<TestExecution>(TestExecution{device, scope, &test_});
    }
    std::shared_ptr<TestExecution> exclusiveRun(const std::shared_ptr<core::Device>& device) {
        return std::make_shared<TestExecution>(TestExecution{device, TestExecution::ownDevice, &exclusive_});
    }

    GeneralDiagnosticDispatcher dispatcher_{2, [](std::uint64_t) {}};
    std::shared_ptr<core::Device> a_ = std::make_shared<tests::PlainDevice>("0100");
    std::shared_ptr<core::Device> b_ = std::make_shared<tests::PlainDevice>("0200");
    tests::PlainTest test_{1};
    tests::PlainTest exclusive_{2, true};
};

TEST_F(DispatcherTest, OccupiesOneCardWithARunOfScopeOne) {
    dispatcher_.started(run(a_, 1));
    EXPECT_FALSE(dispatcher_.canStart(run(a_, 1)));
    EXPECT_FALSE(dispatcher_.canStart(run(a_, 0)));
    EXPECT_TRUE(dispatcher_.canStart(run(b_, 1)));
    EXPECT_TRUE(dispatcher_.canStart(run(b_, 0)));
    dispatcher_.finished(run(a_, 1));
    EXPECT_TRUE(dispatcher_.canStart(run(a_, 1)));
}

TEST_F(DispatcherTest, OccupiesTheOnePlaceOfTheModuleWithARunOfScopeZero) {
    dispatcher_.started(run(a_, 0));
    EXPECT_FALSE(dispatcher_.canStart(run(b_, 0)));
    EXPECT_TRUE(dispatcher_.canStart(run(b_, 1)));
    EXPECT_FALSE(dispatcher_.canStart(run(a_, 1)));
    dispatcher_.finished(run(a_, 0));
    EXPECT_TRUE(dispatcher_.canStart(run(b_, 0)));
}

TEST_F(DispatcherTest, LetsARunOfAnotherScopePassTheOnePlaceAndTakeIt) {
    dispatcher_.started(run(a_, 0));
    EXPECT_TRUE(dispatcher_.canStart(run(b_, 2)));
    dispatcher_.started(run(b_, 2));
    EXPECT_TRUE(dispatcher_.canStart(run(a_, 1))) << "the place is now of the other card";
    EXPECT_FALSE(dispatcher_.canStart(run(b_, 1)));
}

TEST_F(DispatcherTest, FreesTheOnePlaceAtTheEndOfAnyRunThatIsNotOfScopeOne) {
    dispatcher_.started(run(a_, 0));
    dispatcher_.finished(run(b_, 1));
    EXPECT_FALSE(dispatcher_.canStart(run(b_, 0)));
    dispatcher_.finished(run(b_, 2));
    EXPECT_TRUE(dispatcher_.canStart(run(b_, 0))) << "it is not asked whose place it was";
    EXPECT_TRUE(dispatcher_.canStart(run(a_, 1)));
}

TEST_F(DispatcherTest, KeepsACardBusyWhenARunOfTheWholeModuleEndsOnIt) {
    dispatcher_.started(run(a_, 1));
    dispatcher_.finished(run(a_, 0));
    EXPECT_FALSE(dispatcher_.canStart(run(a_, 1)));
}

TEST_F(DispatcherTest, HoldsAnExclusiveTestBackForNoOtherTest) {
    dispatcher_.started(run(a_, 1));
    EXPECT_TRUE(dispatcher_.canStart(exclusiveRun(b_)));
    dispatcher_.started(exclusiveRun(b_));
    dispatcher_.finished(run(a_, 1));
    EXPECT_FALSE(dispatcher_.canStart(exclusiveRun(a_))) << "the end of a plain test ends no exclusive one";
}

TEST_F(DispatcherTest, OccupiesNothingForADeviceThatIsGone) {
    const auto gone = exclusiveRun(std::make_shared<tests::PlainDevice>("0100"));
    dispatcher_.started(gone);
    EXPECT_TRUE(dispatcher_.canStart(exclusiveRun(a_)));
    dispatcher_.started(exclusiveRun(a_));
    dispatcher_.finished(gone);
    EXPECT_FALSE(dispatcher_.canStart(exclusiveRun(b_)));
}

TEST_F(DispatcherTest, StartsARunWithoutExecutionOrDevice) {
    EXPECT_TRUE(dispatcher_.canStart(nullptr));
    dispatcher_.started(nullptr);
    dispatcher_.finished(nullptr);
    dispatcher_.started(run(a_, 1));
    auto gone = run(std::make_shared<tests::PlainDevice>("0100"), 1);
    EXPECT_TRUE(dispatcher_.canStart(gone));
    dispatcher_.finished(gone);
    EXPECT_FALSE(dispatcher_.canStart(run(a_, 1))) << "the end of a run without device frees nothing";
}

TEST_F(DispatcherTest, RunsOneExclusiveTestAtATime) {
    dispatcher_.started(exclusiveRun(a_));
    EXPECT_FALSE(dispatcher_.canStart(exclusiveRun(b_)));
    EXPECT_TRUE(dispatcher_.canStart(run(b_, 1)));
    dispatcher_.finished(exclusiveRun(a_));
    EXPECT_TRUE(dispatcher_.canStart(exclusiveRun(b_)));
}

TEST_F(DispatcherTest, AsksATestWhetherItMustRunAloneThoughNoneRuns) {
    EXPECT_TRUE(dispatcher_.canStart(run(a_, 1)));
    EXPECT_EQ(test_.timesAsked, 1);
    dispatcher_.started(run(a_, 1));
    test_.timesAsked = 0;
    EXPECT_FALSE(dispatcher_.canStart(run(a_, 1)));
    EXPECT_EQ(test_.timesAsked, 0) << "the card is busy, which is answer enough";
}

TEST_F(DispatcherTest, TakesTheEndOfARunThatNeverStarted) {
    dispatcher_.finished(run(a_, 1));
    dispatcher_.finished(run(a_, 0));
    EXPECT_TRUE(dispatcher_.canStart(run(a_, 1)));
}

TEST_F(DispatcherTest, FreesACardAtTheFirstEndOfTwoStarts) {
    dispatcher_.started(run(a_, 1));
    dispatcher_.started(run(a_, 1));
    dispatcher_.finished(run(a_, 1));
    EXPECT_TRUE(dispatcher_.canStart(run(a_, 1)));
}

class Callable final : public core::TaskInterface {
public:
    explicit Callable(std::function<void()> body) : body_(std::move(body)) {}
    void run() override { body_(); }

private:
    std::function<void()> body_;
};

TEST_F(DispatcherTest, RunsATaskOnAWorkerWithoutWaitingForIt) {
    std::promise<void> release;
    std::promise<std::thread::id> runner;
    dispatcher_.execute(std::make_unique<Callable>([&] {
        release.get_future().wait();
        runner.set_value(std::this_thread::get_id());
    }));
    release.set_value();
    EXPECT_NE(runner.get_future().get(), std::this_thread::get_id());
}

TEST_F(DispatcherTest, LosesWhatATaskThrowsAndGoesOn) {
    dispatcher_.execute(std::make_unique<Callable>([] { throw std::runtime_error("lost"); }));
    std::promise<void> done;
    dispatcher_.execute(std::make_unique<Callable>([&] { done.set_value(); }));
    EXPECT_EQ(done.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

TEST_F(DispatcherTest, DestroysATaskWhenItHasRun) {
    const auto content = std::make_shared<int>(0);
    dispatcher_.execute(std::make_unique<Callable>([content] {}));
    std::promise<void> done;
    dispatcher_.execute(std::make_unique<Callable>([&] { done.set_value(); }));
    ASSERT_EQ(done.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_EQ(content.use_count(), 1);
}

TEST(Dispatcher, LetsTheRunningTaskEndBeforeItGoesAway) {
    bool ended = false;
    std::promise<void> started;
    {
        GeneralDiagnosticDispatcher dispatcher(2, [](std::uint64_t) {});
        dispatcher.execute(std::make_unique<Callable>([&] {
            started.set_value();
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            ended = true;
        }));
        started.get_future().wait();
    }
    EXPECT_TRUE(ended);
}

TEST(Dispatcher, HasOneWorkerLessThanThereAreProcessorsAndTwoIfTheirNumberIsUnknown) {
    const auto workers = [](unsigned processors) {
        return GeneralDiagnosticDispatcher(processors, [](std::uint64_t) {}).workers();
    };
    EXPECT_EQ(workers(4), 3U);
    EXPECT_EQ(workers(0), 2U);
}

TEST_F(DispatcherTest, TakesANullTask) {
    dispatcher_.execute(nullptr);
    std::promise<void> done;
    dispatcher_.execute(std::make_unique<Callable>([&] { done.set_value(); }));
    EXPECT_EQ(done.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

TEST(Dispatcher, HasNoWorkerOnAMachineWithOneProcessor) {
    GeneralDiagnosticDispatcher dispatcher(1, [](std::uint64_t) {});
    EXPECT_EQ(dispatcher.workers(), 0U);
    bool ran = false;
    dispatcher.execute(std::make_unique<Callable>([&] { ran = true; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(ran);
}

} // namespace
} // namespace vexil::utils
