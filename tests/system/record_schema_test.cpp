#include "system/cim/record_schema.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vexil::system::RecordIds;

RecordIds idsFrom(std::int32_t first, std::int32_t count) {
    RecordIds ids;
    for (std::int32_t i = 0; i < count; ++i) {
        ids.add(first + i);
    }
    return ids;
}

TEST(RecordIds, BeginAt0) {
    EXPECT_EQ(RecordIds().next(), 0);
    EXPECT_FALSE(RecordIds().full());
}

TEST(RecordIds, GoOnBehindTheLargestInAnyOrder) {
    RecordIds ids;
    for (const std::int32_t id : {3, 9, 4}) {
        ids.add(id);
    }
    EXPECT_EQ(ids.next(), 10);
    EXPECT_EQ(ids.oldest(), 3);
}

TEST(RecordIds, GoOnIn32BitsBehindTheLargestSignedNumber) {
    RecordIds ids;
    ids.add(2147483647);
    EXPECT_EQ(static_cast<std::uint32_t>(ids.next()), 2147483648U);
}

TEST(RecordIds, AreFullWith5000Records) {
    EXPECT_FALSE(idsFrom(0, 4999).full());
    EXPECT_TRUE(idsFrom(0, 5000).full());
    EXPECT_TRUE(idsFrom(0, 5001).full());
}

TEST(RecordIds, DeleteId7OfIds7To5006AndGoOnWith5007) {
    const auto ids = idsFrom(7, 5000);
    EXPECT_TRUE(ids.full());
    EXPECT_EQ(ids.oldest(), 7);
    EXPECT_EQ(ids.next(), 5007);
}

TEST(RecordIds, LookForTheOldestFrom5001Downwards) {
    EXPECT_EQ(idsFrom(5001, 5000).oldest(), 5001);
    EXPECT_FALSE(idsFrom(5001, 5000).exhausted());
    EXPECT_EQ(idsFrom(5002, 5000).oldest(), 5001) << "which is no record of the class";
    EXPECT_TRUE(idsFrom(5002, 5000).exhausted());
    EXPECT_FALSE(idsFrom(5002, 4999).exhausted()) << "nothing needs to go";
    EXPECT_EQ(RecordIds().oldest(), 5001);
}

TEST(RecordSchema, HasTheNamesAndTypesThatToolsKnow) {
    using vexil::system::CimType;
    EXPECT_EQ(static_cast<int>(CimType::Text), 8);
    EXPECT_EQ(static_cast<int>(CimType::Unsigned32), 19);
    EXPECT_STREQ(vexil::system::recordKey, "Id");
    const auto& texts = vexil::system::recordTexts;
    EXPECT_EQ(std::vector<std::string>(texts.begin(), texts.end()),
              (std::vector<std::string>{"ModuleName", "DeviceUdi", "DeviceDisplayName", "TestName",
                                        "TestStatus", "TestStartTimestamp", "TestDuration"}));
    EXPECT_STREQ(vexil::system::suiteNamespace, L"ROOT\\Norvane");
    EXPECT_STREQ(vexil::system::recordNamespace, L"ROOT\\Norvane\\Norvane_Diagnostics");
}

} // namespace
