#include "host/cli/terminal.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vexil::host {
namespace {

TEST(TerminalText, CountsCharactersAndNotBytes) {
    EXPECT_EQ(columns("abc"), 3U);
    EXPECT_EQ(columns("48°C"), 4U);
    EXPECT_EQ(columns("█░"), 2U);
}

TEST(TerminalText, IsFilledOrCutToAWidth) {
    EXPECT_EQ(fit("ab", 4), "ab  ");
    EXPECT_EQ(fit("abcd", 4), "abcd");
    EXPECT_EQ(fit("abcdef", 4), "ab..");
    EXPECT_EQ(fit("°°°°°°", 4), "°°..");
    EXPECT_EQ(fit("°°°", 2), "°°");
    EXPECT_EQ(fit("abc", 0), "");
}

TEST(TerminalText, IsBrokenBetweenWords) {
    EXPECT_EQ(wrap("one two three", 7), (std::vector<std::string>{"one two", "three"}));
    EXPECT_EQ(wrap("verylongword a", 4), (std::vector<std::string>{"verylongword", "a"}));
    EXPECT_TRUE(wrap("", 10).empty());
}

TEST(Terminal, PaintsOnlyWhereThereAreColours) {
    std::ostringstream out;
    EXPECT_EQ(Terminal(out, {true, true, true, 80}).paint("x", Style::Good), "\x1b[32mx\x1b[0m");
    EXPECT_EQ(Terminal(out, {true, false, true, 80}).paint("x", Style::Good), "x");
    EXPECT_EQ(Terminal(out, {true, true, true, 80}).paint("x", Style::Plain), "x");
}

TEST(Terminal, WritesPlainLinesWhereNobodyWatches) {
    std::ostringstream out;
    Terminal terminal(out, {});
    terminal.line("text");
    terminal.paragraph("one two", 2);
    EXPECT_EQ(out.str(), "text\n  one two\n");
}

TEST(Terminal, ClearsWhatItDrawsOver) {
    std::ostringstream out;
    Terminal terminal(out, {true, false, false, 80});
    terminal.redraw("half");
    terminal.line("done");
    EXPECT_EQ(out.str(), "\rhalf\x1b[K\rdone\x1b[K\n");
}

TEST(Terminal, DrawsABlockOverTheOneBefore) {
    std::ostringstream out;
    Terminal terminal(out, {true, false, false, 80, 24});
    terminal.redrawBlock({"one", "two"});
    EXPECT_EQ(out.str(), "\rone\x1b[K\n\rtwo\x1b[K\n\r\x1b[J");
    out.str("");
    terminal.redrawBlock({"three"});
    EXPECT_EQ(out.str(), "\x1b[2A\rthree\x1b[K\n\r\x1b[J") << "what stood below is cleared";
    out.str("");
    terminal.line("between");
    terminal.redrawBlock({"four"});
    EXPECT_EQ(out.str(), "\rbetween\x1b[K\n\rfour\x1b[K\n\r\x1b[J") << "the line stays";
}

TEST(Terminal, LeavesOutOfABlockWhatTheScreenHasNoLinesFor) {
    std::ostringstream out;
    Terminal terminal(out, {true, false, false, 80, 3});
    terminal.redrawBlock({"one", "two", "three"});
    EXPECT_EQ(out.str(), "\rone\x1b[K\n\rtwo\x1b[K\n\r\x1b[J");
}

TEST(TerminalText, IsAlignedRight) {
    EXPECT_EQ(alignRight("7 °C", 6), "  7 °C");
    EXPECT_EQ(alignRight("long", 2), "long");
}

TEST(Terminal, ChoosesGlyphsByWhatTheTerminalShows) {
    std::ostringstream out;
    EXPECT_EQ(Terminal(out, {true, true, true, 80}).glyph("✓", "+"), "✓");
    EXPECT_EQ(Terminal(out, {true, true, false, 80}).glyph("✓", "+"), "+");
}

} // namespace
} // namespace vexil::host
