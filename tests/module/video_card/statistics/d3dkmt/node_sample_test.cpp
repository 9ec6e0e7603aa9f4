#include "module/video_card/statistics/d3dkmt/node_sample.h"

#include <gtest/gtest.h>

#include <limits>

namespace vexil::tests {
namespace {

using module::video_card::D3DKMTNodeSample;
using module::video_card::nodeLoad;

constexpr std::int64_t frequency = 10'000'000;

D3DKMTNodeSample sampled(std::int64_t runningTimeDelta, std::int64_t counterDelta) {
    D3DKMTNodeSample node;
    node.runningTimeDelta = runningTimeDelta;
    node.counterDelta = counterDelta;
    return node;
}

TEST(NodeLoad, IsExactlyFiftyForHalfTheWindow) {
    EXPECT_EQ(nodeLoad(sampled(2'500'000, 5'000'000), frequency), 50.0F);
}

TEST(NodeLoad, BringsTheCounterToTheUnitOfTheRunningTime) {
    EXPECT_EQ(nodeLoad(sampled(2'500'000, 1'000'000), 2'000'000), 50.0F);
}

TEST(NodeLoad, IsReckonedInSinglePrecision) {
    // 16,777,217 is the first whole number that a float cannot hold.
    EXPECT_EQ(nodeLoad(sampled(16'777'216, 16'777'217), frequency), 100.0F);
}

TEST(NodeLoad, BringsTheUnitToTheCounterBeforeItMultiplies) {
    // The other order gives 50, and a reading that is rounded up would be one less.
    EXPECT_EQ(nodeLoad(sampled(24'925'001'728, 14'955), 3), 50.0000076F);
}

TEST(NodeLoad, IsNeverMoreThanAHundred) {
    EXPECT_EQ(nodeLoad(sampled(5'000'001, 5'000'000), frequency), 100.0F);
    EXPECT_EQ(nodeLoad(sampled(std::numeric_limits<std::int64_t>::max(), 1), frequency), 100.0F);
}

TEST(NodeLoad, IsZeroForAWindowOfZero) { EXPECT_EQ(nodeLoad(sampled(2'500'000, 0), frequency), 0.0F); }

TEST(NodeLoad, IsZeroWhereTheFrequencyWasNeverRead) {
    EXPECT_EQ(nodeLoad(sampled(2'500'000, 5'000'000), 0), 0.0F);
}

TEST(NodeLoad, TakesATimeThatRunsBackwardsAsAVeryLongOne) {
    EXPECT_EQ(nodeLoad(sampled(-1, 5'000'000), frequency), 100.0F);
}

TEST(NodeLoad, TakesACounterThatRunsBackwardsAsAVeryLongWindow) {
    EXPECT_NEAR(nodeLoad(sampled(5'000'000, -1), frequency), 0.0F, 0.001F);
}

TEST(NodeSample, KeepsTheLastReadingAndItsDistance) {
    D3DKMTNodeSample node;
    node.takeCounter(70);
    node.takeCounter(100);
    node.takeRunningTime(8);
    node.takeRunningTime(5);
    EXPECT_EQ(node.counter, 100);
    EXPECT_EQ(node.counterDelta, 30);
    EXPECT_EQ(node.runningTime, 5);
    EXPECT_EQ(node.runningTimeDelta, -3);
}

TEST(NodeSample, WrapsAroundForNonsense) {
    D3DKMTNodeSample node;
    node.takeRunningTime(std::numeric_limits<std::int64_t>::max());
    node.takeRunningTime(std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(node.runningTimeDelta, 1);
}

} // namespace
} // namespace vexil::tests
