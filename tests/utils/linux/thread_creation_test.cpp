#include "support/linux/no_more_threads.h"
#include "utils/thread_pool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <system_error>

namespace vexil::utils {
namespace {

TEST(ThreadCreation, ThatFailsIsASystemErrorOfThePool) {
    const tests::NoMoreThreads limit;
    try {
        const ThreadPool pool(2, [](std::uint64_t) {});
        FAIL() << "threads were made";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::resource_unavailable_try_again);
    }
}

TEST(ThreadCreation, ThatFailsOnTheWayEndsTheWorkersThatAreThere) {
    constexpr unsigned beyondAllBounds = 1'000'000;
    std::optional<tests::NoMoreThreads> limit;
    std::once_flag first;
    std::atomic<unsigned> started = 0;
    const auto pin = [&](std::uint64_t) {
        ++started;
        std::call_once(first, [&] { limit.emplace(); });
    };
    EXPECT_THROW(ThreadPool(beyondAllBounds, pin), std::system_error);
    EXPECT_GE(started, 1U);
}

} // namespace
} // namespace vexil::utils
