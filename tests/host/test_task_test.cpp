#include "host/core/test_task.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace vexil::host {
namespace {

using namespace std::chrono_literals;

class ScriptedTest final : public core::Test {
public:
    explicit ScriptedTest(std::function<std::uint8_t(const core::TestRunArguments&)> script)
        : Test(core::TestDescriptor{}), script_(std::move(script)) {}
    std::uint8_t execute(const core::TestRunArguments& arguments) override { return script_(arguments); }
    [[nodiscard]] bool isSupported(core::Device*, std::shared_ptr<core::Device>) const override {
        return true;
    }

private:
    std::function<std::uint8_t(const core::TestRunArguments&)> script_;
};

TaskEnd runTask(std::function<std::uint8_t(const core::TestRunArguments&)> script) {
    ScriptedTest test(std::move(script));
    const auto watch = std::make_shared<TaskWatch>();
    std::thread worker([&] { TestTask(test, {}, watch).run(); });
    std::optional<TaskEnd> end;
    while (!(end = watch->wait(1h))) {
    }
    worker.join();
    return *end;
}

TEST(TestTask, LeavesTheResultOfTheTestForTheHost) {
    for (std::uint8_t result = 0; result <= 5; ++result) {
        const auto end = runTask([result](const auto&) { return result; });
        EXPECT_EQ(end.result, result);
        EXPECT_TRUE(end.error.empty());
    }
}

TEST(TestTask, HandsTheArgumentsToTheTest) {
    const std::uint8_t cancel = 0;
    ScriptedTest test([&cancel](const core::TestRunArguments& arguments) {
        return static_cast<std::uint8_t>(arguments.cancelRequested == &cancel ? 1 : 3);
    });
    const auto watch = std::make_shared<TaskWatch>();
    TestTask(test, {{}, &cancel, nullptr, nullptr}, watch).run();
    EXPECT_EQ(watch->wait(0ms)->result, 1);
}

TEST(TestTask, TurnsAnExceptionOfTheTestIntoAnError) {
    const auto end = runTask([](const auto&) -> std::uint8_t { throw std::runtime_error("broken"); });
    EXPECT_EQ(end.result, core::TestResult::NotCompleted);
    EXPECT_EQ(end.error, "the test ended with an exception: broken");
    EXPECT_FALSE(runTask([](const auto&) -> std::uint8_t { throw 7; }).error.empty());
}

TEST(TestTask, EndsWithAnErrorIfItIsDroppedUnrun) {
    ScriptedTest test([](const auto&) -> std::uint8_t { return 1; });
    const auto watch = std::make_shared<TaskWatch>();
    { const TestTask dropped(test, {}, watch); }
    const auto end = watch->wait(0ms);
    ASSERT_TRUE(end);
    EXPECT_EQ(end->error, "the dispatcher dropped the task without running it");
}

TEST(TestTask, HoldsNothingOfTheDeviceOnceTheHostKnowsTheEnd) {
    const auto events = std::make_shared<core::SystemEventState>();
    ScriptedTest test([](const auto&) -> std::uint8_t { return 1; });
    const auto watch = std::make_shared<TaskWatch>();
    TestTask task(test, {{}, nullptr, nullptr, events}, watch);
    EXPECT_EQ(events.use_count(), 2);
    task.run();
    EXPECT_EQ(events.use_count(), 1);
}

TEST(TaskWatch, ReturnsWithoutAnEndOnNewsAndWhenTimeIsUp) {
    TaskWatch watch;
    EXPECT_FALSE(watch.wait(1ms));
    watch.news();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(watch.wait(1h));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    EXPECT_FALSE(watch.wait(1ms)) << "news are told once";
}

} // namespace
} // namespace vexil::host
