#include "module/video_card/stress/load_controller.h"

#include "stress_fakes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using module::video_card::LoadController;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(LoadController, StartsAtFullLoadWithNothingCounted) {
    const LoadController controller;
    EXPECT_EQ(controller.period, 1);
    EXPECT_EQ(controller.frames, 0U);
    EXPECT_EQ(controller.loadFraction, 1.0);
    EXPECT_EQ(controller.deadline.startTick, 0U);
    EXPECT_EQ(controller.deadline.seconds, 0U);
    EXPECT_FALSE(controller.deadline.infinite);
    EXPECT_FALSE(controller.burnInActive);
}

struct LoadRow {
    int load;
    std::uint32_t sleep; ///< milliseconds in each second, truncated
};

class Load : public testing::TestWithParam<LoadRow> {};

INSTANTIATE_TEST_SUITE_P(Of, Load,
                         testing::Values(LoadRow{100, 0}, LoadRow{99, 10}, LoadRow{90, 99}, LoadRow{75, 250},
                                         LoadRow{50, 500}, LoadRow{1, 990}),
                         [](const auto& row) { return std::to_string(row.param.load) + "Percent"; });

TEST_P(Load, SleepsForTheRestOfTheSecond) {
    const auto& [load, sleep] = GetParam();
    FakeTimer timer;
    timer.tick = 5000;
    LoadController controller;
    controller.loadFraction = load / 100.0;
    EXPECT_TRUE(controller.tick(timer));
    EXPECT_THAT(timer.sleeps, ElementsAre(sleep));
    EXPECT_EQ(controller.startTick, 5000 + sleep) << "taken behind the sleep";
    EXPECT_EQ(controller.nowTick, controller.startTick);
}

TEST(LoadController, DoesNothingBeforeTheLoadsPartHasPassed) {
    FakeTimer timer;
    LoadController controller;
    controller.loadFraction = 0.5;
    controller.startTick = 1000;
    timer.tick = 1499;
    EXPECT_FALSE(controller.tick(timer));
    EXPECT_THAT(timer.sleeps, IsEmpty());
    EXPECT_EQ(controller.startTick, 1000U);
    EXPECT_EQ(controller.nowTick, 1499U);
    timer.tick = 1500;
    EXPECT_TRUE(controller.tick(timer));
    EXPECT_THAT(timer.sleeps, ElementsAre(500U));
}

TEST(LoadController, AtFullLoadIsBusyOnceInASecond) {
    FakeTimer timer;
    LoadController controller;
    timer.tick = 999;
    EXPECT_FALSE(controller.tick(timer));
    timer.tick = 1000;
    EXPECT_TRUE(controller.tick(timer));
    timer.tick = 1999;
    EXPECT_FALSE(controller.tick(timer));
    timer.tick = 2001;
    EXPECT_TRUE(controller.tick(timer));
    EXPECT_THAT(timer.sleeps, ElementsAre(0U, 0U));
}

TEST(LoadController, CountsEveryTick) {
    FakeTimer timer;
    LoadController controller;
    for (int i = 0; i < 3; ++i) {
        controller.tick(timer);
    }
    timer.tick = 1000;
    controller.tick(timer);
    EXPECT_EQ(controller.frames, 4U);
}

TEST(LoadController, BringsAFractionThatCannotBeBackIntoItsRange) {
    FakeTimer timer;
    LoadController controller;
    controller.loadFraction = -0.25;
    EXPECT_TRUE(controller.tick(timer));
    EXPECT_EQ(controller.loadFraction, 0.0);
    EXPECT_THAT(timer.sleeps, ElementsAre(1250U)) << "only behind the sleep";
}

TEST(LoadController, CountsAcrossTheWrapOfTheTimer) {
    FakeTimer timer;
    LoadController controller;
    controller.loadFraction = 0.5;
    controller.startTick = 0xFFFFFF00U;
    timer.tick = 0x80U;
    EXPECT_FALSE(controller.tick(timer));
    timer.tick = 0x100U;
    EXPECT_TRUE(controller.tick(timer)) << "512 milliseconds";
}

} // namespace
} // namespace vexil::tests
