#include "module/video_card/cuda/cuda_devices.h"
#include "module/video_card/cuda/driver_gate.h"
#include "text_handlers.h"

#include <gtest/gtest.h>

#include <map>

namespace vexil::module::video_card {
namespace {

/// As a driver writes it, which ends a text that is short enough.
void write(const std::string& answer, PciBusIdText& text) { answer.copy(text.data(), text.size()); }

std::vector<CudaDeviceRecord> list(std::int32_t count, std::map<std::int32_t, std::string> ids) {
    sal::TextHandler strings;
    return listCudaDevices({[&](std::int32_t& out) {
                                out = count;
                                return true;
                            },
                            [&](std::int32_t index, PciBusIdText& text) {
                                const auto found = ids.find(index);
                                if (found == ids.end()) {
                                    return false;
                                }
                                write(found->second, text);
                                return true;
                            }},
                           strings);
}

TEST(CudaDevices, AreListedByLocationInLowerCaseWithoutTheDomain) {
    const auto records = list(1, {{0, "0000:0A:00.0"}});
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].pciBusId, "0a:00.0");
    EXPECT_EQ(records[0].index, 0);
}

TEST(CudaDevices, DropTheDomainWithoutLookingAtIt) {
    const auto records = list(1, {{0, "00FF:0A:00.0"}});
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].pciBusId, "0a:00.0");
}

TEST(CudaDevices, SkipADeviceThatDoesNotTellItsLocation) {
    const auto records = list(3, {{0, "0000:01:00.0"}, {2, "0000:02:00.0"}});
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[1].index, 2);
    EXPECT_EQ(records[1].pciBusId, "02:00.0");
}

TEST(CudaDevices, EndATextThatADriverLeavesOpen) {
    const auto records = list(1, {{0, "0000:0A:00.0FFFF"}});
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].pciBusId, "0a:00.0");
}

TEST(CudaDevices, AreAnEmptyListWhenTheirNumberCannotBeTold) {
    sal::TextHandler strings;
    const auto records = listCudaDevices({[](std::int32_t& count) {
                                              count = 1;
                                              return false;
                                          },
                                          [](std::int32_t, PciBusIdText& text) {
                                              write("0000:01:00.0", text);
                                              return true;
                                          }},
                                         strings);
    EXPECT_TRUE(records.empty());
}

TEST(CudaDevices, AreAnEmptyListForANumberBelowOne) {
    EXPECT_TRUE(list(0, {{0, "0000:01:00.0"}}).empty());
    EXPECT_TRUE(list(-1, {{0, "0000:01:00.0"}}).empty());
}

TEST(CudaDriverGate, PassesVersion113AndNothingBelowIt) {
    EXPECT_TRUE(isCudaDriverOutOfDate(0));
    EXPECT_TRUE(isCudaDriverOutOfDate(10020));
    EXPECT_TRUE(isCudaDriverOutOfDate(11020));
    EXPECT_TRUE(isCudaDriverOutOfDate(11029));
    EXPECT_FALSE(isCudaDriverOutOfDate(11030));
    EXPECT_FALSE(isCudaDriverOutOfDate(11040));
    EXPECT_FALSE(isCudaDriverOutOfDate(12000));
    EXPECT_FALSE(isCudaDriverOutOfDate(13000));
    EXPECT_TRUE(isCudaDriverOutOfDate(11120)) << "only the last two digits are the minor version";
}

} // namespace
} // namespace vexil::module::video_card
