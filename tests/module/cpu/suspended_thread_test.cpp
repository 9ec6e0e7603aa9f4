#include "platform/suspended_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace vexil::tests {
namespace {

using namespace platform;

TEST(SuspendedThread, RunsNothingBeforeItIsResumed) {
    std::atomic<bool> ran = false;
    const auto thread = createSuspendedThread([&] {
        ran = true;
        return 42U;
    });
    ASSERT_NE(thread, nullptr);
    EXPECT_TRUE(thread->setPriority(-15));
    EXPECT_TRUE(thread->setGroupAffinity(0, 1));
    EXPECT_TRUE(thread->setAffinityMask(1));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(ran);
    EXPECT_TRUE(thread->resume());
    EXPECT_TRUE(thread->wait());
    EXPECT_TRUE(ran);
    EXPECT_EQ(thread->exitCode(), 42U);
}

TEST(SuspendedThread, EndsWithoutRunningWhenNobodyResumesIt) {
    bool ran = false;
    createSuspendedThread([&] {
        ran = true;
        return 0U;
    }).reset();
    EXPECT_FALSE(ran);
}

TEST(SuspendedThread, RefusesAPlaceWithoutAProcessor) {
    const auto thread = createSuspendedThread([] { return 0U; });
    EXPECT_FALSE(thread->setAffinityMask(0));
    EXPECT_FALSE(thread->setGroupAffinity(9, 1)) << "this machine has no such group";
}

} // namespace
} // namespace vexil::tests
