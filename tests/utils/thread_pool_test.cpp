#include "utils/thread_pool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <mutex>
#include <stdexcept>

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

TEST(ThreadPool, StopsOnceHoweverOftenItIsAsked) {
    ThreadPool pool(2, pinNothing);
    pool.stop();
    pool.stop();
}

} // namespace
} // namespace vexil::utils
