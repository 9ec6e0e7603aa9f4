#include "system/cim/query_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace {
bool refuseNextArray = false;
}

/// The buffer of the text is the only array that is asked for without exceptions.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    if (refuseNextArray) {
        refuseNextArray = false;
        return nullptr;
    }
    try {
        return ::operator new[](size);
    } catch (...) {
        return nullptr;
    }
}

namespace {

using vexil::system::buildQueryText;
using vexil::system::CimConnection;
using vexil::system::CimStatus;
using vexil::system::QueryArguments;
using vexil::system::QueryText;
using vexil::system::WhereClause;

constexpr CimConnection whole = {true, true, true};

QueryText build(const std::vector<const char*>& properties, const char* className,
                WhereClause whereClause = WhereClause::None, const char* where = nullptr) {
    return buildQueryText(whole, {properties.data(), static_cast<std::int32_t>(properties.size()), className,
                                  whereClause, where});
}

TEST(QueryText, SelectsAPropertyFromAClass) {
    const auto query = build({"Caption"}, "Win32_Processor");
    EXPECT_EQ(query.status, CimStatus::Success);
    EXPECT_STREQ(query.text.get(), "SELECT Caption FROM Win32_Processor");
}

TEST(QueryText, JoinsPropertiesAndAddsTheClause) {
    const auto query = build({"A", "B", "C"}, "D", WhereClause::Required, "E = 'F'");
    EXPECT_STREQ(query.text.get(), "SELECT A, B, C FROM D WHERE E = 'F'");
}

TEST(QueryText, FillsItsBufferExactly) {
    const auto without = build({"Abc", "De"}, "Fghi");
    EXPECT_EQ(without.size, 14U + 3 + 2 + 4 + 2);
    EXPECT_EQ(std::strlen(without.text.get()) + 1, without.size);
    const auto with = build({"Abc", "De"}, "Fghi", WhereClause::Required, "J = 'K'");
    EXPECT_EQ(with.size, 21U + 3 + 2 + 4 + 7 + 2);
    EXPECT_EQ(std::strlen(with.text.get()) + 1, with.size);
}

TEST(QueryText, SendsTheFirst50CharactersOfALongerPropertyOrClass) {
    const std::string property = std::string(50, 'p') + "0123456789";
    const std::string className = std::string(50, 'c') + "x";
    const auto query = build({property.c_str()}, className.c_str());
    EXPECT_EQ(query.text.get(), "SELECT " + std::string(50, 'p') + " FROM " + std::string(50, 'c'));
    EXPECT_EQ(query.size, 14U + 50 + 50);
}

TEST(QueryText, SendsTheFirst500CharactersOfALongerClause) {
    const auto query = build({"A"}, "B", WhereClause::Required, (std::string(500, 'w') + "x").c_str());
    EXPECT_EQ(query.text.get(), "SELECT A FROM B WHERE " + std::string(500, 'w'));
}

TEST(QueryText, KeepsNamesAndClausesOfExactlyTheLimit) {
    const std::string name(50, 'n');
    const std::string clause(500, 'w');
    EXPECT_EQ(build({name.c_str()}, name.c_str(), WhereClause::Required, clause.c_str()).text.get(),
              "SELECT " + name + " FROM " + name + " WHERE " + clause);
}

TEST(QueryText, LeavesOutAnOptionalClauseThatIsNull) {
    EXPECT_STREQ(build({"A"}, "B", WhereClause::Optional).text.get(), "SELECT A FROM B");
    EXPECT_STREQ(build({"A"}, "B", WhereClause::Optional, "C = 'D'").text.get(),
                 "SELECT A FROM B WHERE C = 'D'");
}

TEST(QueryText, TakesAnEmptyClauseForAClause) {
    EXPECT_STREQ(build({"A"}, "B", WhereClause::Required, "").text.get(), "SELECT A FROM B WHERE ");
}

TEST(QueryText, AnswersItsOwnStatusWhereThereIsNoMemory) {
    refuseNextArray = true;
    const auto query = build({"A"}, "B");
    EXPECT_EQ(query.status, CimStatus::TextNotBuilt);
    EXPECT_EQ(static_cast<int>(query.status), 28);
    EXPECT_EQ(query.text, nullptr);
}

/// Everything is wrong at first; each step mends what the one before it complained of.
TEST(QueryChecks, ComeInTheirOrder) {
    CimConnection connection;
    QueryArguments arguments;
    arguments.whereClause = WhereClause::Required;
    const char* properties[] = {"A", nullptr};
    const auto status = [&] { return static_cast<int>(buildQueryText(connection, arguments).status); };

    EXPECT_EQ(status(), 18);
    connection.located = true;
    EXPECT_EQ(status(), 19);
    connection.connected = true;
    EXPECT_EQ(status(), 20);
    connection.blanketSet = true;
    EXPECT_EQ(status(), 25);
    arguments.properties = properties;
    EXPECT_EQ(status(), 27);
    arguments.count = -1;
    EXPECT_EQ(status(), 27);
    arguments.count = 2;
    EXPECT_EQ(status(), 29);
    arguments.where = "C = 'D'";
    EXPECT_EQ(status(), 25) << "one of the properties is still null";
    properties[1] = "B";
    EXPECT_EQ(status(), 26);
    arguments.className = "E";
    EXPECT_EQ(status(), 0);
}

TEST(QueryChecks, DoNotAskForAClauseOutsideQueryWhere) {
    const char* properties[] = {"A"};
    EXPECT_EQ(checkQuery(whole, {properties, 1, "B", WhereClause::None}), CimStatus::Success);
    EXPECT_EQ(checkQuery(whole, {properties, 1, "B", WhereClause::Optional}), CimStatus::Success);
}

} // namespace
