#include "system/cim/cim_value.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using vexil::system::cimRowText;
using vexil::system::CimValue;
using vexil::system::wmiQueryText;

using Texts = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

struct ValueCase {
    const char* name;
    CimValue value;
    std::string row;   ///< in the rows of `Cim`
    std::string query; ///< in the map of `WmiQuery`
};

class ValueText : public testing::TestWithParam<ValueCase> {};

TEST_P(ValueText, IsThatOfTheTableInRows) { EXPECT_EQ(cimRowText(GetParam().value), GetParam().row); }
TEST_P(ValueText, IsThatOfTheTableInTheMap) { EXPECT_EQ(wmiQueryText(GetParam().value), GetParam().query); }

const ValueCase valueCases[] = {
    {"Empty", {}, "", ""},
    {"SignedNumber", std::int32_t{-2147483647 - 1}, "-2147483648", "-2147483648"},
    {"Number", std::int32_t{167}, "167", "167"},
    {"ShortNumber", std::int16_t{-7}, "", "-7"},
    {"UnsignedShort", std::uint16_t{65535}, "65535", ""},
    {"Byte", std::uint8_t{255}, "255", ""},
    {"True", true, "", "True"},
    {"False", false, "", "False"},
    {"Text", std::string("Intel64 Family 6"), "Intel64 Family 6", "Intel64 Family 6"},
    {"EmptyText", std::string(), "", ""},
    {"Texts", Texts{"a", "", "bc"}, "a;;bc;", ""},
    {"NoTexts", Texts{}, "", ""},
    {"Bytes", Bytes{65, 0, 255}, std::string("A\0\xFF", 3), ""},
};

INSTANTIATE_TEST_SUITE_P(Table, ValueText, testing::ValuesIn(valueCases),
                         [](const auto& tested) { return tested.param.name; });

TEST(ValueText, IsCutTo500CharactersInRowsOnly) {
    const std::string text = std::string(500, 'x') + "y";
    EXPECT_EQ(cimRowText(text), std::string(500, 'x'));
    EXPECT_EQ(wmiQueryText(text), text);
}

TEST(ValueText, CutsEachElementOfAnArrayOfTexts) {
    const std::string text = std::string(500, 'x') + "y";
    EXPECT_EQ(cimRowText(Texts{text, "z"}), std::string(500, 'x') + ";z;");
}

} // namespace
