#include "platform/linux/kernel_graphics/engine_times.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using platform::DrmFdInfo;
using platform::EngineTimes;
using platform::EngineUse;

DrmFdInfo client(std::uint64_t id, EngineUse use, const char* engine = "gfx") {
    DrmFdInfo info;
    info.clientId = id;
    info.engines[engine] = use;
    return info;
}

EngineUse ran(std::uint64_t nanoseconds, std::uint64_t capacity = 1) { return {nanoseconds, 0, 0, capacity}; }

TEST(EngineTimes, SumOverTheClients) {
    EngineTimes times;
    times.update({client(1, ran(1'000)), client(2, ran(2'000))}, 10);
    EXPECT_EQ(times.runningTime("gfx"), 30);
    times.update({client(1, ran(1'500)), client(2, ran(2'000))}, 20);
    EXPECT_EQ(times.runningTime("gfx"), 35);
}

TEST(EngineTimes, KeepWhatAClientDidBeforeItEnded) {
    EngineTimes times;
    times.update({client(1, ran(1'000)), client(2, ran(2'000))}, 10);
    times.update({client(2, ran(2'100))}, 20);
    EXPECT_EQ(times.runningTime("gfx"), 31);
}

TEST(EngineTimes, CountTheWholeWorkOfANewClient) {
    EngineTimes times;
    times.update({client(1, ran(1'000))}, 10);
    times.update({client(1, ran(1'000)), client(2, ran(700))}, 20);
    EXPECT_EQ(times.runningTime("gfx"), 17);
}

TEST(EngineTimes, CountAnOldClientThatIsFoundLateFromThereOn) {
    EngineTimes times;
    times.update({client(1, ran(1'000))}, 10);
    times.update({client(1, ran(1'000)), client(2, ran(1'001))}, 20);
    EXPECT_EQ(times.runningTime("gfx"), 10) << "nobody runs for 1001 nanoseconds in 1000";
    times.update({client(1, ran(1'000)), client(2, ran(1'501))}, 30);
    EXPECT_EQ(times.runningTime("gfx"), 15);
}

TEST(EngineTimes, CountWhatANewClientDidInAllOfTheTimeSince) {
    EngineTimes times;
    times.update({}, 10);
    times.update({client(1, ran(1'000)), client(2, ran(2'000, 2), "video")}, 20);
    EXPECT_EQ(times.runningTime("gfx"), 10);
    EXPECT_EQ(times.runningTime("video"), 10) << "two engines for as long";
}

TEST(EngineTimes, TakeAClientForOldByAnyOfItsEngines) {
    EngineTimes times;
    times.update({}, 10);
    auto old = client(1, ran(9'000));
    old.engines["enc"] = ran(300);
    times.update({old}, 20);
    EXPECT_EQ(times.runningTime("gfx"), 0);
    EXPECT_EQ(times.runningTime("enc"), 0);
    old.engines["dec"] = ran(400);
    times.update({old}, 30);
    EXPECT_EQ(times.runningTime("dec"), 4) << "an engine that a known client had not used before";
}

TEST(EngineTimes, CountAClientThatCouldNotBeReadForAMomentFromThereOn) {
    EngineTimes times;
    times.update({client(1, ran(5'000))}, 10);
    times.update({}, 20);
    times.update({client(1, ran(5'100))}, 30);
    EXPECT_EQ(times.runningTime("gfx"), 50);
}

TEST(EngineTimes, NeverRunBackwards) {
    EngineTimes times;
    times.update({client(1, ran(1'000))}, 10);
    times.update({client(1, ran(400))}, 20);
    EXPECT_EQ(times.runningTime("gfx"), 10);
}

TEST(EngineTimes, ShareTheTimeAmongEnginesOfOneKind) {
    EngineTimes times;
    times.update({client(1, ran(1'000, 2))}, 10);
    EXPECT_EQ(times.runningTime("gfx"), 5);
}

TEST(EngineTimes, TurnCyclesIntoTheTimeThatPassed) {
    EngineTimes times;
    times.update({client(1, {0, 100, 1'000, 1})}, 1'000);
    EXPECT_EQ(times.runningTime("gfx"), 0) << "there is no window yet";
    times.update({client(1, {0, 300, 2'000, 1})}, 6'000);
    EXPECT_EQ(times.runningTime("gfx"), 1'000) << "a fifth of 5000";
}

TEST(EngineTimes, AreZeroForAnEngineThatNobodyUsed) { EXPECT_EQ(EngineTimes().runningTime("gfx"), 0); }

TEST(EnginesOfDriver, AreKnownForTheDriversOfCards) {
    EXPECT_EQ(platform::enginesOfDriver("amdgpu").size(), 8U);
    EXPECT_EQ(platform::enginesOfDriver("i915").size(), 5U);
    EXPECT_EQ(platform::enginesOfDriver("xe").size(), 5U);
    EXPECT_TRUE(platform::enginesOfDriver("nouveau").empty());
    EXPECT_TRUE(platform::enginesOfDriver("").empty());
}

} // namespace
} // namespace vexil::tests
