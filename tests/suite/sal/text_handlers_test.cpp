#include "text_handlers.h"

#include <gtest/gtest.h>

#include <iomanip>

namespace vexil::sal {
namespace {

std::string identifier(const std::string& text) {
    std::string result = "old";
    TextHandler().makeIdentifier(text, result);
    return result;
}

std::string normalized(std::string text) {
    TextHandler().normalize(text);
    return text;
}

TEST(TextHandler, MakesAStableIdentifierThatKeepsTheLetters) {
    EXPECT_EQ(identifier("Intel Arc A770 Graphics03:00.0"), "Intel_Arc_A770_Graphics03_00_0");
    EXPECT_EQ(identifier("  two  blanks "), "two_blanks_");
    EXPECT_EQ(identifier("\u56fe\u5f62 1"), "\u56fe\u5f62_1");
    EXPECT_EQ(identifier(""), "");
}

TEST(TextHandler, TidiesANameOfMarksAndBlanks) {
    EXPECT_EQ(normalized("Intel(R) Arc(TM) A770 Graphics"), "Intel Arc A770 Graphics");
    EXPECT_EQ(normalized("  NVIDIA\tGeForce  RTX "), "NVIDIA GeForce RTX");
    EXPECT_EQ(normalized("Radeon\u2122 RX"), "Radeon RX");
    EXPECT_EQ(normalized(""), "");
}

TEST(TextHandler, LowersTheLettersOfTheLocation) {
    std::string text = "0A:1F.0 \u00c4";
    TextHandler().toLower(text);
    EXPECT_EQ(text, "0a:1f.0 \u00c4");
}

TEST(NumberText, ParsesWholeTextsInTheBaseOfTheManipulator) {
    NumberText numbers;
    std::uint32_t number = 5;
    EXPECT_TRUE(numbers.parse(number, "0a", std::hex));
    EXPECT_EQ(number, 10U);
    EXPECT_TRUE(numbers.parse(number, "10", std::dec));
    EXPECT_EQ(number, 10U);
    EXPECT_TRUE(numbers.parse(number, "17", std::oct));
    EXPECT_EQ(number, 15U);
    for (const char* text : {"", "0g", "1 ", " 1", "-1", "0x1", "99999999999"}) {
        EXPECT_FALSE(numbers.parse(number, text, std::hex)) << text;
        EXPECT_EQ(number, 15U) << "a failed parse leaves the number alone";
    }
}

TEST(NumberText, WritesDecimalNumbers) {
    std::string text;
    NumberText().toText(text, 4294967295U);
    EXPECT_EQ(text, "4294967295");
}

} // namespace
} // namespace vexil::sal
