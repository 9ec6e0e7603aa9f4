#include "system/result_log.h"

#include "support/memory_cim.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using vexil::system::CimStatus;
using vexil::system::ResultLog;
using vexil::system::ResultRecord;
using vexil::tests::MemoryCim;

ResultRecord sampleRecord(const char* status) {
    return {0,
            "VIDEO_CARD",
            "PCI/0a:00.0",
            "Aurora 9",
            "VIDEO_MEMORY_TEST",
            status,
            "2026-01-31T23:59:59.123Z",
            "12.500"};
}

class ResultLogTest : public testing::Test {
protected:
    void expectEmpty() {
        records_.resize(3);
        EXPECT_EQ(log_.read(records_), CimStatus::Success);
        EXPECT_TRUE(records_.empty());
        bool exhausted = true;
        EXPECT_EQ(log_.readExhausted(exhausted), CimStatus::Success);
        EXPECT_FALSE(exhausted);
    }

    MemoryCim cim_;
    ResultLog log_{cim_};
    std::vector<ResultRecord> records_;
};

TEST_F(ResultLogTest, WritesEachFieldUnderItsNameIntoTheSuitesClass) {
    EXPECT_EQ(log_.append(sampleRecord("Passed")), CimStatus::Success);
    EXPECT_EQ(cim_.records,
              (std::vector<MemoryCim::Record>{{{"Id", "0"},
                                               {"ModuleName", "VIDEO_CARD"},
                                               {"DeviceUdi", "PCI/0a:00.0"},
                                               {"DeviceDisplayName", "Aurora 9"},
                                               {"TestName", "VIDEO_MEMORY_TEST"},
                                               {"TestStatus", "Passed"},
                                               {"TestStartTimestamp", "2026-01-31T23:59:59.123Z"},
                                               {"TestDuration", "12.500"}}}));
    EXPECT_EQ(cim_.lastClass, "TestResult");
    EXPECT_TRUE(cim_.hasNamespace);
}

TEST_F(ResultLogTest, ReadsWhatItWroteTheOldestFirst) {
    ASSERT_EQ(log_.append(sampleRecord("Passed")), CimStatus::Success);
    ASSERT_EQ(log_.append(sampleRecord("Failed")), CimStatus::Success);
    std::ranges::reverse(cim_.records);
    ASSERT_EQ(log_.read(records_), CimStatus::Success);
    auto first = sampleRecord("Passed");
    auto second = sampleRecord("Failed");
    second.id = 1;
    EXPECT_EQ(records_, (std::vector{first, second}));
}

TEST_F(ResultLogTest, IsEmptyBeforeItsFirstRecord) {
    expectEmpty();
    EXPECT_EQ(log_.clear(), CimStatus::Success);
    EXPECT_EQ(cim_.removed, L"") << "there is nothing to remove";
}

TEST_F(ResultLogTest, IsEmptyInANamespaceWithoutItsClass) {
    cim_.hasNamespace = true;
    cim_.lacksClass = true;
    expectEmpty();
    EXPECT_EQ(log_.append(sampleRecord("Passed")), CimStatus::Success);
    EXPECT_EQ(log_.read(records_), CimStatus::Success);
    EXPECT_EQ(records_.size(), 1U);
}

TEST_F(ResultLogTest, RemovesItsNamespaceToClear) {
    ASSERT_EQ(log_.append(sampleRecord("Passed")), CimStatus::Success);
    EXPECT_EQ(log_.clear(), CimStatus::Success);
    EXPECT_EQ(cim_.removed, L"ROOT|Norvane|Norvane_Diagnostics");
    EXPECT_EQ(log_.read(records_), CimStatus::Success);
    EXPECT_TRUE(records_.empty());
}

TEST_F(ResultLogTest, HandsEveryOtherStatusOn) {
    ASSERT_EQ(log_.append(sampleRecord("Passed")), CimStatus::Success);
    cim_.writeStatus = CimStatus::SecurityNotInitialized;
    EXPECT_EQ(log_.append(sampleRecord("Passed")), CimStatus::SecurityNotInitialized);
    cim_.removeStatus = CimStatus::NoLocator;
    EXPECT_EQ(log_.clear(), CimStatus::NoLocator);
    cim_.queryStatus = CimStatus::QueryFailed;
    bool exhausted = false;
    EXPECT_EQ(log_.read(records_), CimStatus::QueryFailed);
    EXPECT_EQ(log_.readExhausted(exhausted), CimStatus::QueryFailed);
    EXPECT_EQ(log_.clear(), CimStatus::QueryFailed);
}

TEST_F(ResultLogTest, TellsThatItCanTakeNoMoreRecords) {
    cim_.hasNamespace = true;
    for (int id = 5001; id < 10001; ++id) {
        cim_.records.push_back({{"Id", std::to_string(id)}});
    }
    bool exhausted = true;
    EXPECT_EQ(log_.readExhausted(exhausted), CimStatus::Success);
    EXPECT_FALSE(exhausted);
    cim_.records.front()["Id"] = "10001";
    EXPECT_EQ(log_.readExhausted(exhausted), CimStatus::Success);
    EXPECT_TRUE(exhausted);
}

TEST_F(ResultLogTest, KeepsTextsOutsideAscii) {
    auto record = sampleRecord("Passed");
    record.deviceDisplayName = "Aurora \xC3\xA9";
    ASSERT_EQ(log_.append(record), CimStatus::Success);
    ASSERT_EQ(log_.read(records_), CimStatus::Success);
    EXPECT_EQ(records_.at(0).deviceDisplayName, "Aurora \xC3\xA9");
}

} // namespace
