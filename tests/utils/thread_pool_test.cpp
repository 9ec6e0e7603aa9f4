#include "utils/thread_pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <system_error>

namespace vexil::utils {
namespace {

void pinNothing(std::uint64_t) {}

TEST(ThreadPool, StartsOneWorkerLessThanThereAreProcessors) {
    EXPECT_EQ(workerCount(8), 7U);
    EXPECT_EQ(workerCount(2), 1U);
    EXPECT_EQ(workerCount(1), 0U) << "a machine with one processor has no worker";
    EXPECT_EQ(workerCount(0), 2U) << "the number is not known";
}

TEST(ThreadPool, CountsTheMasksOfItsWorkersFromTwo) {
    std::vector<std::uint64_t> masks;
    for (std::uint64_t counter = 1; counter <= 7; ++counter) {
        masks.push_back(workerAffinityMask(counter, 4));
    }
    EXPECT_EQ(masks, (std::vector<std::uint64_t>{2, 3, 4, 1, 2, 3, 4}));
}

TEST(ThreadPool, PinsEachOfSevenWorkersOnce) {
    std::mutex mutex;
    std::vector<std::uint64_t> masks;
    {
        ThreadPool pool(workerCount(8), [&](std::uint64_t mask) {
            const std::lock_guard lock(mutex);
            masks.push_back(mask);
        });
        EXPECT_EQ(pool.size(), 7U);
    }
    std::ranges::sort(masks);
    EXPECT_EQ(masks, (std::vector<std::uint64_t>{1, 2, 2, 3, 3, 4, 4}));
}

TEST(ThreadPool, PinsAWorkerOnItsOwnThread) {
    std::promise<std::thread::id> pinned;
    ThreadPool pool(1, [&](std::uint64_t) { pinned.set_value(std::this_thread::get_id()); });
    std::thread::id runner;
    pool.submit([&] { runner = std::this_thread::get_id(); }).get();
    auto pinnedThread = pinned.get_future();
    ASSERT_EQ(pinnedThread.wait_for(std::chrono::seconds(0)), std::future_status::ready);
    EXPECT_EQ(pinnedThread.get(), runner);
}

TEST(ThreadPool, RunsATaskOnAWorker) {
    ThreadPool pool(1, pinNothing);
    std::thread::id runner;
    pool.submit([&] { runner = std::this_thread::get_id(); }).get();
    EXPECT_NE(runner, std::thread::id());
    EXPECT_NE(runner, std::this_thread::get_id());
}

TEST(ThreadPool, GoesOnAfterATaskThatThrows) {
    ThreadPool pool(1, pinNothing);
    auto failed = pool.submit([] { throw std::runtime_error("no"); });
    EXPECT_THROW(failed.get(), std::runtime_error);
    pool.submit([] {}).get();
}

TEST(ThreadPool, LetsTheRunningTaskEndAndDropsTheQueuedOnes) {
    ThreadPool pool(1, pinNothing);
    std::promise<void> started;
    std::promise<void> release;
    std::atomic<bool> ended = false;
    pool.submit([&] {
        started.set_value();
        release.get_future().wait();
        ended = true;
    });
    auto queued = pool.submit([] {});
    started.get_future().wait();
    auto stopping = std::async(std::launch::async, [&] { pool.stop(); });
    EXPECT_EQ(stopping.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    EXPECT_NO_THROW(pool.stop()) << "only the first call waits";
    EXPECT_FALSE(ended);
    release.set_value();
    stopping.get();
    EXPECT_TRUE(ended);
    EXPECT_EQ(queued.wait_for(std::chrono::seconds(0)), std::future_status::timeout) << "it was never run";
}

TEST(ThreadPool, DestroysATaskThatIsPushedAfterItsStop) {
    ThreadPool pool(1, pinNothing);
    pool.stop();
    auto future = pool.submit([] {});
    EXPECT_THROW(future.get(), std::future_error);
}

TEST(ThreadPool, DestroysQueuedTasksWithoutRunningThem) {
    const auto content = std::make_shared<int>(0);
    bool ran = false;
    {
        ThreadPool pool(0, pinNothing);
        pool.submit([&ran, content] { ran = true; });
        EXPECT_EQ(content.use_count(), 2);
    }
    EXPECT_EQ(content.use_count(), 1);
    EXPECT_FALSE(ran);
}

TEST(ThreadPool, RunsOneTaskAtATimeOnEachWorker) {
    ThreadPool pool(2, pinNothing);
    std::promise<void> release;
    const auto released = release.get_future().share();
    std::promise<void> started[2];
    for (auto& each : started) {
        pool.submit([&each, released] {
            each.set_value();
            released.wait();
        });
    }
    for (auto& each : started) {
        ASSERT_EQ(each.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready)
            << "both workers are at work at once";
    }
    auto third = pool.submit([] {});
    EXPECT_EQ(third.wait_for(std::chrono::milliseconds(30)), std::future_status::timeout);
    release.set_value();
    EXPECT_EQ(third.wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

TEST(ThreadPool, DestroysATaskWhenItHasRunAndNotAtTheEnd) {
    ThreadPool pool(1, pinNothing);
    const auto content = std::make_shared<int>(0);
    pool.submit([content] {}).get();
    pool.submit([] {}).get(); // The first one is gone before the second one is taken.
    EXPECT_EQ(content.use_count(), 1);
}

TEST(ThreadPoolDeathTest, CannotBeStoppedByItsOwnWorker) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // Such a pool cannot be destroyed any more, so that the process ends here.
    EXPECT_EXIT(
        {
            auto* pool = new ThreadPool(1, pinNothing);
            auto stopping = pool->submit([pool] { pool->stop(); });
            try {
                stopping.get();
                std::_Exit(1);
            } catch (const std::system_error& error) {
                std::_Exit(error.code() == std::errc::resource_deadlock_would_occur ? 0 : 2);
            }
        },
        testing::ExitedWithCode(0), "");
}

TEST(ThreadPool, StopsOnceHoweverOftenItIsAsked) {
    ThreadPool pool(2, pinNothing);
    pool.stop();
    pool.stop();
}

} // namespace
} // namespace vexil::utils
