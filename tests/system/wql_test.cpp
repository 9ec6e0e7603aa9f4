#include "system/cim/wql.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using vexil::system::parseWql;

TEST(Wql, ReadsPropertiesAndClass) {
    const auto query = parseWql("SELECT Caption, Name FROM Win32_Processor");
    ASSERT_TRUE(query);
    EXPECT_EQ(query->properties, (std::vector<std::string>{"Caption", "Name"}));
    EXPECT_EQ(query->className, "Win32_Processor");
    EXPECT_FALSE(query->condition);
}

TEST(Wql, ReadsACondition) {
    const auto query =
        parseWql("SELECT DriverVersion FROM C WHERE DriverProviderName = 'NVIDIA Corporation'");
    ASSERT_TRUE(query && query->condition);
    EXPECT_EQ(query->condition->property, "DriverProviderName");
    EXPECT_EQ(query->condition->value, "NVIDIA Corporation");
}

TEST(Wql, ReadsWordsInBothCasesAndAnyBlanks) {
    const auto query = parseWql("  select *\tfrom  __Thing\n where a=\"it's\"  ");
    ASSERT_TRUE(query && query->condition);
    EXPECT_EQ(query->properties, std::vector<std::string>{"*"});
    EXPECT_EQ(query->className, "__Thing");
    EXPECT_EQ(query->condition->value, "it's");
}

TEST(Wql, TakesABackslashForAnEscape) {
    const auto query = parseWql(R"(SELECT A FROM B WHERE C = 'O\'Neil \\ Sons')");
    ASSERT_TRUE(query && query->condition);
    EXPECT_EQ(query->condition->value, R"(O'Neil \ Sons)");
}

class NotUnderstood : public testing::TestWithParam<const char*> {};
TEST_P(NotUnderstood, IsNothing) { EXPECT_FALSE(parseWql(GetParam())); }
INSTANTIATE_TEST_SUITE_P(
    Wql, NotUnderstood,
    testing::Values("", "SELECT", "SELECT FROM B", "SELECT A", "SELECT A, FROM B", "SELECT A FROM",
                    "SELECT A B FROM C", "DELETE A FROM B", "SELECTA FROM B", "SELECT 1A FROM B",
                    "SELECT A FROM B C", "SELECT A FROM B WHERE", "SELECT A FROM B WHERE ",
                    "SELECT A FROM B WHERE C", "SELECT A FROM B WHERE C =", "SELECT A FROM B WHERE C = D",
                    "SELECT A FROM B WHERE C = 1", "SELECT A FROM B WHERE C = 'D",
                    "SELECT A FROM B WHERE C = 'D\\'", "SELECT A FROM B WHERE C = 'D\\",
                    "SELECT A FROM B WHERE C = \"D'", "SELECT A FROM B WHERE C = 'O'Neil'",
                    "SELECT A FROM B WHERE C <> 'D'", "SELECT A FROM B WHERE C LIKE 'D'",
                    "SELECT A FROM B WHERE 'D' = C", "SELECT A FROM B WHERE C = 'D' AND E = 'F'"));

TEST(EqualIgnoringCase, ComparesAsciiLettersOnly) {
    using vexil::system::equalIgnoringCase;
    EXPECT_TRUE(equalIgnoringCase("DISPLAY", "Display"));
    EXPECT_TRUE(equalIgnoringCase("", ""));
    EXPECT_FALSE(equalIgnoringCase("Display", "Displays"));
    EXPECT_FALSE(equalIgnoringCase("[", "{"));
    EXPECT_FALSE(equalIgnoringCase("\xC3\x84", "\xC3\xA4"));
}

} // namespace
