#include "utils/accessibility/style_sheet.h"

#include <gtest/gtest.h>

namespace vexil::utils::accessibility {
namespace {

using Rules = std::vector<StyleRule>;

TEST(StyleSheet, ReadsSelectorsAndTheirProperties) {
    EXPECT_EQ(
        parseStyleSheet("QLabel#a { color: red; border : none }\nQWidget#b{margin:0}"),
        (Rules{{"QLabel#a", {{"color", "red"}, {"border", "none"}}}, {"QWidget#b", {{"margin", "0"}}}}));
}

TEST(StyleSheet, IgnoresARuleSetWithoutAnOpeningBrace) {
    EXPECT_EQ(parseStyleSheet("color: red; } QLabel#a { color: blue }"),
              (Rules{{"QLabel#a", {{"color", "blue"}}}}));
}

TEST(StyleSheet, IgnoresARuleSetWithTwoOpeningBraces) {
    EXPECT_EQ(parseStyleSheet("QLabel#a { QLabel#b { color: red } QLabel#c { color: blue }"),
              (Rules{{"QLabel#c", {{"color", "blue"}}}}));
}

TEST(StyleSheet, ReadsARuleSetWithoutAClosingBrace) {
    EXPECT_EQ(parseStyleSheet("QLabel#a { color: red"), (Rules{{"QLabel#a", {{"color", "red"}}}}));
}

TEST(StyleSheet, TakesAnEmptySelectorForASelector) {
    EXPECT_EQ(parseStyleSheet("{ color: red }"), (Rules{{"", {{"color", "red"}}}}));
}

TEST(StyleSheet, KeepsTheColonsOfAValue) {
    EXPECT_EQ(parseStyleSheet("QLabel#a { image: url(\":/a.svg\") }"),
              (Rules{{"QLabel#a", {{"image", "url(\":/a.svg\")"}}}}));
}

TEST(StyleSheet, IgnoresADeclarationWithoutAColonOrWithoutAName) {
    EXPECT_EQ(parseStyleSheet("QLabel#a { red; : blue; ; color: green }"),
              (Rules{{"QLabel#a", {{"color", "green"}}}}));
}

TEST(StyleSheet, KeepsAPropertyWithoutAValue) {
    EXPECT_EQ(parseStyleSheet("QLabel#a { color: }"), (Rules{{"QLabel#a", {{"color", ""}}}}));
}

TEST(StyleSheet, KeepsSelectorsInTheOrderOfTheirFirstAppearance) {
    EXPECT_EQ(parseStyleSheet("z { a: 1 } m { a: 2 } z { b: 3; a: 4 } a { a: 5 }"),
              (Rules{{"z", {{"a", "4"}, {"b", "3"}}}, {"m", {{"a", "2"}}}, {"a", {{"a", "5"}}}}));
}

TEST(StyleSheet, TakesBlanksOffAroundSelectorsNamesAndValues) {
    EXPECT_EQ(parseStyleSheet("\n\t QLabel#a:hover \r\n{\n  color\t:\n red \r;}"),
              (Rules{{"QLabel#a:hover", {{"color", "red"}}}}));
}

TEST(StyleSheet, WritesOneDeclarationALine) {
    EXPECT_EQ(
        serializeStyleSheet({{"QLabel#a", {{"color", "red"}, {"border", "1px solid"}}}, {"b", {{"c", ""}}}}),
        "QLabel#a {\n  border: 1px solid;\n  color: red;\n}\nb {\n  c: ;\n}\n");
}

TEST(StyleSheet, WritesNoSelectorWithoutProperties) {
    EXPECT_EQ(serializeStyleSheet(parseStyleSheet("a { } b { c: d } e { f }")), "b {\n  c: d;\n}\n");
}

TEST(StyleSheet, ReadsNothingFromNothing) {
    EXPECT_TRUE(parseStyleSheet("").empty());
    EXPECT_TRUE(parseStyleSheet("}}} } ;;; : }").empty());
}

} // namespace
} // namespace vexil::utils::accessibility
