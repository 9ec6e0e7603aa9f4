#include "module/video_card/catalogue.h"
#include "module/video_card/module.h"
#include "module/video_card/video_card_dispatcher.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <utility>

// The object behind the interface: what it hands out, and the order in which its parts come and go.
namespace vexil::module::video_card {
namespace {

class Callable final : public core::TaskInterface {
public:
    explicit Callable(std::function<void()> body) : body_(std::move(body)) {}
    void run() override { body_(); }

private:
    std::function<void()> body_;
};

class ModuleObject : public testing::Test {
protected:
    tests::FakeMachine machine_;
    Module module_{machine_, 2};
};

TEST_F(ModuleObject, HandsOutACopyOfItsIds) {
    module_.testIds().clear();
    EXPECT_EQ(module_.testIds().size(), catalogue.size());
}

TEST_F(ModuleObject, DoesNothingForAShutdown) {
    module_.shutdown();
    EXPECT_NE(module_.deviceScanner(), nullptr);
    EXPECT_EQ(module_.testIds().size(), catalogue.size());
    std::promise<void> ran;
    module_.dispatcher()->execute(std::make_unique<Callable>([&] { ran.set_value(); }));
    EXPECT_EQ(ran.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

TEST_F(ModuleObject, MakesANewTestForEachRequest) {
    const auto first = module_.createTest(1);
    const auto second = module_.createTest(1);
    EXPECT_NE(first, second);
}

TEST(ModuleLife, LetsItsWorkersEndBeforeItLetsGoOfItsDevices) {
    tests::FakeMachine machine;
    std::weak_ptr<core::DiagnosticDispatcher> dispatcher;
    bool released = false;
    machine.onRelease = [&] {
        released = true;
        EXPECT_TRUE(dispatcher.expired()) << "the workers end first";
    };
    {
        const Module module(machine, 2);
        dispatcher = module.dispatcher();
        EXPECT_FALSE(dispatcher.expired());
    }
    EXPECT_TRUE(released);
}

TEST(ModuleLife, HasWorkersFromTheStart) {
    tests::FakeMachine machine;
    const Module module(machine, 4);
    const auto dispatcher = std::dynamic_pointer_cast<VideoCardDispatcher>(module.dispatcher());
    ASSERT_NE(dispatcher, nullptr);
    EXPECT_EQ(dispatcher->workers(), 3U);
}

} // namespace
} // namespace vexil::module::video_card
