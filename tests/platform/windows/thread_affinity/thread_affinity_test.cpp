#include "platform/thread_affinity.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

namespace vexil::platform {
namespace {

/// The mask that a new thread has after `pin`. The system tells it only to who sets another one.
DWORD_PTR maskAfter(void (*pin)()) {
    DWORD_PTR mask = 0;
    std::thread([&mask, pin] {
        pin();
        mask = SetThreadAffinityMask(GetCurrentThread(), 1);
    }).join();
    return mask;
}

TEST(ThreadAffinity, PinsTheCallingThreadToTheProcessorsOfTheMask) {
    EXPECT_EQ(maskAfter([] { setThreadAffinityMask(1); }), 1U);
    EXPECT_EQ(maskAfter([] { setThreadAffinityMask(2); }), 2U);
}

TEST(ThreadAffinity, StaysAsItIsAfterAMaskOfNoProcessor) {
    const auto before = maskAfter([] {});
    EXPECT_NE(before, 0U);
    EXPECT_EQ(maskAfter([] { setThreadAffinityMask(0); }), before);
}

} // namespace
} // namespace vexil::platform
