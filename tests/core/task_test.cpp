#include "core/task.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexil::core {
namespace {

using PackagedTask = Task<std::packaged_task<void()>>;

TEST(Task, RunsItsCallableOnceHoweverOftenItIsRun) {
    int runs = 0;
    PackagedTask task(std::packaged_task<void()>([&] { ++runs; }));
    EXPECT_EQ(runs, 0);
    task.run();
    task.run();
    EXPECT_EQ(runs, 1);
}

TEST(Task, StoresWhatItsCallableThrows) {
    std::packaged_task<void()> packaged([] { throw std::runtime_error("stored"); });
    auto future = packaged.get_future();
    std::unique_ptr<TaskInterface> task = std::make_unique<PackagedTask>(std::move(packaged));
    EXPECT_NO_THROW(task->run());
    EXPECT_THROW(future.get(), std::runtime_error);
}

TEST(Task, BreaksItsPromiseWhenItIsDestroyedWithoutARun) {
    std::packaged_task<void()> packaged([] {});
    auto future = packaged.get_future();
    { const PackagedTask task(std::move(packaged)); }
    EXPECT_THROW(future.get(), std::future_error);
}

} // namespace
} // namespace vexil::core
