#include "platform/linux/kernel_graphics/drm_fdinfo.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using platform::parseDrmFdInfo;

TEST(DrmFdInfo, TellsCardClientAndEngineTimes) {
    const auto info =
        parseDrmFdInfo("pos:\t0\ndrm-driver:\ti915\ndrm-client-id:\t7\ndrm-pdev:\t0000:00:02.0\n"
                       "drm-engine-render:\t9288864723 ns\ndrm-engine-video-enhance:  12 ns\n"
                       "drm-engine-capacity-video:\t2\ndrm-engine-video:\t8 ns");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->driver, "i915");
    EXPECT_EQ(info->clientId, 7U);
    EXPECT_EQ(info->pciAddress, "0000:00:02.0");
    EXPECT_EQ(info->engines.at("render").nanoseconds, 9288864723U);
    EXPECT_EQ(info->engines.at("render").capacity, 1U);
    EXPECT_EQ(info->engines.at("video-enhance").nanoseconds, 12U);
    EXPECT_EQ(info->engines.at("video").nanoseconds, 8U);
    EXPECT_EQ(info->engines.at("video").capacity, 2U);
    EXPECT_EQ(info->engines.size(), 3U);
}

TEST(DrmFdInfo, TellsCyclesBesideThoseThatPassed) {
    const auto info = parseDrmFdInfo("drm-driver: xe\ndrm-cycles-rcs: 5\ndrm-total-cycles-rcs: 50\n");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->engines.at("rcs").cycles, 5U);
    EXPECT_EQ(info->engines.at("rcs").totalCycles, 50U);
}

TEST(DrmFdInfo, IsNothingForAnotherKindOfFile) {
    EXPECT_FALSE(parseDrmFdInfo(""));
    EXPECT_FALSE(parseDrmFdInfo("pos:\t0\nflags:\t02100002\nmnt_id:\t25\n"));
}

TEST(DrmFdInfo, LeavesOutLinesThatItCannotRead) {
    const auto info = parseDrmFdInfo("drm-driver: x\nno colon\n:\ndrm-engine-a: many ns\n"
                                     "drm-engine-b: 99999999999999999999999 ns\ndrm-engine-c: -1 ns\n"
                                     "drm-engine-capacity-d: 0\n\n\n");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->engines.size(), 1U);
    EXPECT_EQ(info->engines.at("d").capacity, 1U) << "nothing is divided by 0";
}

} // namespace
} // namespace vexil::tests
