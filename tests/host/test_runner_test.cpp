#include "core/test.h"
#include "host/core/test_runner.h"
#include "host/fake_module/fake_module.h"
#include "host/fake_module/fake_tests.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace vexil::host {
namespace {

using tests::FakeCase;
using tests::FakeId;
using tests::FakeModule;

/// Notes what it is asked, in order and by whom, and runs a task on a thread of its own.
class NotingDispatcher final : public core::DiagnosticDispatcher {
public:
    ~NotingDispatcher() override {
        for (auto& worker : workers_) {
            worker.join();
        }
    }
    [[nodiscard]] bool canStart(const std::shared_ptr<const core::TestExecution>& execution) const override {
        note("canStart", execution);
        return free;
    }
    void started(const std::shared_ptr<const core::TestExecution>& execution) override {
        note("started", execution);
    }
    void execute(std::unique_ptr<core::TaskInterface> task) override {
        calls.emplace_back("execute");
        workers_.emplace_back([owned = std::move(task)] { owned->run(); });
    }
    void finished(const std::shared_ptr<const core::TestExecution>& execution) override {
        note("finished", execution);
    }

    bool free = true;
    mutable std::vector<std::string> calls;
    mutable std::set<std::thread::id> callers;
    mutable std::vector<core::TestExecution> executions;

private:
    void note(const char* call, const std::shared_ptr<const core::TestExecution>& execution) const {
        calls.emplace_back(call);
        callers.insert(std::this_thread::get_id());
        executions.push_back(*execution);
    }

    std::vector<std::thread> workers_;
};

class Runs : public ::testing::Test {
protected:
    [[nodiscard]] TestRun run(std::int32_t id, const TestRunner::Watch& watch = {}) {
        test_ = module_.createTest(id);
        TestRunner runner(dispatcher_, {&cancel_, std::make_shared<core::SystemEventState>(), {}});
        return runner.run(cards_.at(0), *test_, watch);
    }

    FakeModule module_{FakeCase::Scripted};
    std::vector<Card> cards_ = scanCards(module_);
    std::unique_ptr<core::Test> test_;
    std::shared_ptr<NotingDispatcher> dispatcher_ = std::make_shared<NotingDispatcher>();
    volatile std::uint8_t cancel_ = 0;
};

TEST_F(Runs, AskTheDispatcherInTheOrderItWantsOnTheCallingThread) {
    static_cast<void>(run(FakeId::passes));
    EXPECT_EQ(dispatcher_->calls, (std::vector<std::string>{"canStart", "started", "execute", "finished"}));
    EXPECT_EQ(dispatcher_->callers, std::set{std::this_thread::get_id()});
}

TEST_F(Runs, OccupyTheirOwnDeviceOnly) {
    static_cast<void>(run(FakeId::passes));
    ASSERT_EQ(dispatcher_->executions.size(), 3U);
    for (const auto& execution : dispatcher_->executions) {
        EXPECT_EQ(execution.scope, core::TestExecution::ownDevice);
        EXPECT_EQ(execution.device.lock(), cards_[0].device.lock());
        EXPECT_EQ(execution.test, test_.get());
    }
}

TEST_F(Runs, RecordWhatTheTestSaid) {
    const auto record = run(FakeId::passes);
    EXPECT_EQ(record.testId, 1);
    EXPECT_EQ(record.name, "VIDEO_MEMORY_TEST");
    EXPECT_EQ(record.result, core::TestResult::Passed);
    EXPECT_EQ(record.progress, (std::vector<std::uint8_t>{0, 2, 50, 100}));
    ASSERT_EQ(record.messages.size(), 1U);
    EXPECT_EQ(record.messages[0].key, "TOTAL_SURFACES_TESTED: 50/50");
    EXPECT_TRUE(record.error.empty());
}

TEST_F(Runs, ThatTheDispatcherRefusesEndWithAnErrorAndAreNotStarted) {
    dispatcher_->free = false;
    const auto record = run(FakeId::passes);
    EXPECT_EQ(record.error, "the dispatcher holds the card for another run");
    EXPECT_EQ(dispatcher_->calls, std::vector<std::string>{"canStart"});
}

TEST_F(Runs, ReleaseTheCardAfterAnException) {
    const auto record = run(FakeId::throws);
    EXPECT_EQ(record.error, "the test ended with an exception: scripted");
    EXPECT_EQ(dispatcher_->calls.back(), "finished");
}

TEST_F(Runs, StopWhenTheByteIsSetWhileTheHostLooksOn) {
    int looks = 0;
    const auto record =
        run(FakeId::waitsForCancel, [&](const RunReporter&, std::chrono::duration<double> elapsed) {
            EXPECT_GE(elapsed.count(), 0.0);
            cancel_ = ++looks >= 2 ? 1 : 0;
        });
    EXPECT_GE(looks, 2);
    EXPECT_EQ(record.result, core::TestResult::NotCompleted);
    EXPECT_GT(record.duration.count(), 0.0);
}

TEST_F(Runs, WorkWithTheSuitesOwnDispatcher) {
    const auto test = module_.createTest(FakeId::passes);
    TestRunner runner(module_.dispatcher(), {&cancel_, nullptr, {}});
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(runner.run(cards_[0], *test).result, core::TestResult::Passed);
    }
}

TEST(DispatcherWorkers, AreMissingOnAMachineWithOneProcessorOnly) {
    EXPECT_FALSE(dispatcherHasWorker(1));
    EXPECT_TRUE(dispatcherHasWorker(2));
    EXPECT_TRUE(dispatcherHasWorker(0)) << "where the number is not known there are two workers";
}

TEST(CardScan, GivesTheCardsInOrderWithTheirOwnDevicesEvenWithOneId) {
    FakeModule module(FakeCase::SameId);
    const auto cards = scanCards(module);
    ASSERT_EQ(cards.size(), 2U);
    EXPECT_EQ(cards[0].record.id, cards[1].record.id);
    EXPECT_EQ(cards[1].device.lock()->displayName(), cards[1].record.name);
    EXPECT_NE(cards[0].device.lock(), cards[1].device.lock());
}

} // namespace
} // namespace vexil::host
