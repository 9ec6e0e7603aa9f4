#include "utils/task_queue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <stdexcept>

namespace vexil::utils {
namespace {

class Traced final : public core::TaskInterface {
public:
    explicit Traced(std::string& trace, char name) : trace_(trace), name_(name) {}
    ~Traced() override { trace_ += std::string("~") + name_; }
    void run() override { trace_ += name_; }

private:
    std::string& trace_;
    char name_;
};

TEST(TaskQueue, HandsOutTasksInTheOrderOfTheirPush) {
    std::string trace;
    TaskQueue queue;
    queue.push(std::make_unique<Traced>(trace, 'a'));
    queue.push(std::make_unique<Traced>(trace, 'b'));
    queue.pop()->run();
    queue.pop()->run();
    EXPECT_EQ(trace, "a~ab~b");
}

TEST(TaskQueue, DestroysATaskThatIsPushedAfterInvalidation) {
    std::string trace;
    TaskQueue queue;
    EXPECT_TRUE(queue.isValid());
    queue.invalidate();
    EXPECT_FALSE(queue.isValid());
    queue.push(std::make_unique<Traced>(trace, 'a'));
    EXPECT_EQ(trace, "~a");
}

TEST(TaskQueue, StillHandsOutATaskQueuedBeforeItsInvalidation) {
    std::string trace;
    TaskQueue queue;
    queue.push(std::make_unique<Traced>(trace, 'a'));
    queue.invalidate();
    EXPECT_NE(queue.pop(), nullptr);
}

TEST(TaskQueue, ThrowsOnceItIsInvalidAndEmpty) {
    TaskQueue queue;
    queue.invalidate();
    try {
        static_cast<void>(queue.pop());
        FAIL() << "nothing was thrown";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "Invalidated queue!");
    }
}

TEST(TaskQueue, WakesAWaitingWorkerForATask) {
    std::string trace;
    TaskQueue queue;
    auto waiting = std::async(std::launch::async, [&] { queue.pop()->run(); });
    EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    queue.push(std::make_unique<Traced>(trace, 'a'));
    ASSERT_EQ(waiting.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    EXPECT_EQ(trace, "a~a");
}

TEST(TaskQueue, WakesEveryWaitingWorkerWhenItIsInvalidated) {
    TaskQueue queue;
    const auto wait = [&] { static_cast<void>(queue.pop()); };
    auto first = std::async(std::launch::async, wait);
    auto second = std::async(std::launch::async, wait);
    EXPECT_EQ(first.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    queue.invalidate();
    EXPECT_THROW(first.get(), std::logic_error);
    EXPECT_THROW(second.get(), std::logic_error);
}

TEST(TaskQueue, DestroysTheTasksThatAreLeftWithoutRunningThem) {
    std::string trace;
    {
        TaskQueue queue;
        queue.push(std::make_unique<Traced>(trace, 'a'));
    }
    EXPECT_EQ(trace, "~a");
}

} // namespace
} // namespace vexil::utils
