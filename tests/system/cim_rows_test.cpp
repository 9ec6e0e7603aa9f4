#include "system/cim/cim_rows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using vexil::system::Cim;
using vexil::system::CimRow;
using vexil::system::CimRowCollector;
using vexil::system::CimRows;
using vexil::system::CimStatus;

/// Only `freeRows` is the base's own.
class QueryLessCim final : public Cim {
public:
    CimStatus queryWhere(const char* const*, const char*, const char*, std::int32_t, CimRows&,
                         const wchar_t*) override {
        return CimStatus::NoLocator;
    }
    CimStatus query(const char* const*, const char*, std::int32_t, CimRows&, const wchar_t*) override {
        return CimStatus::NoLocator;
    }
    CimStatus writeRecord(const std::vector<std::string>&, const std::vector<std::string>&, const char*,
                          const wchar_t*) override {
        return CimStatus::NoLocator;
    }
    CimStatus removeNamespace(const wchar_t*, const wchar_t*, const wchar_t*) override {
        return CimStatus::NoLocator;
    }
};

char* heapText(const char* text) { return std::strcpy(new char[std::strlen(text) + 1], text); }

TEST(FreeRows, DoesNothingToANullAddressOrANullPointer) {
    QueryLessCim cim;
    cim.freeRows(nullptr);
    CimRows rows = nullptr;
    cim.freeRows(&rows);
    EXPECT_EQ(rows, nullptr);
}

TEST(FreeRows, SkipsNullRowsAndNullTexts) {
    QueryLessCim cim;
    // What is not freed shows as a leak under the address sanitizer.
    CimRows rows =
        new std::vector<CimRow*>{new CimRow{heapText("a"), nullptr, heapText("b")}, nullptr, new CimRow{}};
    cim.freeRows(&rows);
    EXPECT_EQ(rows, nullptr);
}

TEST(RowCollector, MakesTheVectorWithTheFirstRow) {
    CimRowCollector collector;
    EXPECT_EQ(collector.take(), nullptr);
    collector.addRow();
    CimRows rows = collector.take();
    ASSERT_NE(rows, nullptr);
    ASSERT_EQ(rows->size(), 1U);
    EXPECT_TRUE(rows->front()->empty());
    vexil::system::freeCimRows(rows);
}

TEST(RowCollector, KeepsTextsInOrderEachWithANulBehindIt) {
    CimRowCollector collector;
    collector.addRow();
    collector.addText("first");
    collector.addText(std::string_view("a\0b", 3));
    collector.addRow();
    collector.addText("");
    CimRows rows = collector.take();
    ASSERT_EQ(rows->size(), 2U);
    ASSERT_EQ(rows->at(0)->size(), 2U);
    EXPECT_STREQ(rows->at(0)->at(0), "first");
    EXPECT_EQ(std::memcmp(rows->at(0)->at(1), "a\0b", 4), 0);
    EXPECT_STREQ(rows->at(1)->at(0), "");
    vexil::system::freeCimRows(rows);
}

TEST(RowCollector, FreesWhatNobodyTakes) {
    CimRowCollector collector;
    collector.addRow();
    collector.addText("left behind");
}

} // namespace
