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
