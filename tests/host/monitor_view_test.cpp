#include "host/cli/monitor_view.h"
#include "host/platform/process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <regex>
#include <sstream>

namespace vexil::host {
namespace {

constexpr auto anyCount = std::numeric_limits<std::uint64_t>::max();
constexpr double gibibyte = 1024.0 * 1024 * 1024;

class MonitorViews : public ::testing::Test {
protected:
    [[nodiscard]] Sample sample(std::uint64_t number, std::int64_t celsius, std::uint64_t percent) const {
        Sample taken;
        taken.number = number;
        taken.elapsed = std::chrono::duration<double>(0.2 * static_cast<double>(number - 1));
        taken.cards.resize(cards_.size());
        taken.cards[0] = {celsius, percent, static_cast<std::uint64_t>(3 * gibibyte)};
        return taken;
    }
    /// What two samples and the end write.
    [[nodiscard]] std::string show(const TerminalTraits& traits) const {
        std::ostringstream out;
        Terminal terminal(out, traits);
        MonitorView view(terminal, language_, cards_, 2);
        view.show(sample(1, 40, 10));
        view.show(sample(2, 45, 30));
        view.finish();
        return out.str();
    }
    [[nodiscard]] static std::vector<std::string> linesOf(const std::string& text) {
        std::vector<std::string> lines;
        std::istringstream stream(text);
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    std::vector<core::DeviceRecord> cards_{
        {"0100", "", "NVIDIA_GRAPHICS_CARD", {}, {}, {}, {}, true},
        {"0a00",
         "",
         "A card with a name that is far too long for a terminal of any width whatsoever, really",
         {},
         {},
         {},
         {},
         true}};
    Language language_ = loadLanguage(platform::programFolder() / "languages", "en", "");
};

TEST_F(MonitorViews, WriteALineForEachCardAndSampleWhereNobodyWatches) {
    const auto lines = linesOf(show({}));
    ASSERT_GE(lines.size(), 6U);
    EXPECT_EQ(lines[0], "");
    EXPECT_EQ(lines[1], "      Time  Card  Temperature         Load  Free memory");
    EXPECT_EQ(lines[2], "     0.0 s  0100        40 °C         10 %      3.0 GiB");
    EXPECT_EQ(lines[3], "     0.0 s  0a00           --           --           --");
    EXPECT_EQ(lines[4], "     0.2 s  0100        45 °C         30 %      3.0 GiB");
}

TEST_F(MonitorViews, EndThoseLinesWithExtremesAndAverages) {
    const auto text = show({});
    EXPECT_NE(text.find("\n                  Minimum     Average     Maximum\n"
                        "NVIDIA graphics card  0100\n"
                        "  Temperature       40 °C     42.5 °C       45 °C\n"
                        "  Load               10 %      20.0 %        30 %\n"
                        "  Free memory     3.0 GiB     3.0 GiB     3.0 GiB\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find('\x1b'), std::string::npos);
}

TEST_F(MonitorViews, DrawATableOverItselfOnATerminal) {
    const auto text = show({true, false, true, 80, 40});
    // Headings, four lines for each of two cards, a blank and the line of the sample.
    EXPECT_NE(text.find("\x1b[11A\r"), std::string::npos) << text;
    EXPECT_EQ(text.find("A\r", text.find("\x1b[11A") + 5), std::string::npos) << "once for two samples";
    EXPECT_NE(text.find("  Temperature       45 °C       40 °C     42.5 °C       45 °C"), std::string::npos)
        << text;
    EXPECT_NE(text.find("Sample 2/2   Time 0:00"), std::string::npos);
    EXPECT_EQ(std::ranges::count(text, '\n'), 1 + 2 * 11);
}

TEST_F(MonitorViews, KeepEveryLineInsideTheTerminal) {
    for (const unsigned width : {61U, 70U, 80U, 200U}) {
        std::ostringstream out;
        const Terminal terminal(out, {true, false, true, width, 40});
        MonitorTable table(terminal, language_, cards_);
        for (std::uint64_t i = 1; i < 100; ++i) {
            table.add(sample(i, 100, 100));
        }
        auto nonsense = sample(100, std::numeric_limits<std::int64_t>::min(), anyCount);
        nonsense.cards[0].freeMemoryBytes = anyCount;
        nonsense.cards[1] = {std::numeric_limits<std::int64_t>::max(), anyCount, anyCount};
        table.add(nonsense);
        ASSERT_LE(table.width(), width);
        for (const auto& line : table.lines(true)) {
            EXPECT_LE(columns(line), width) << line;
        }
    }
}

TEST_F(MonitorViews, ShowNonsenseAsAPowerOfTen) {
    std::ostringstream out;
    const Terminal terminal(out, {true, false, true, 61, 40});
    MonitorTable table(terminal, language_, cards_);
    auto nonsense = sample(1, std::numeric_limits<std::int64_t>::min(), anyCount);
    nonsense.cards[0].freeMemoryBytes = anyCount;
    table.add(nonsense);
    const auto lines = table.lines(true);
    EXPECT_EQ(lines[2], "  Temperature -9.2e+18 °C -9.2e+18 °C -9.2e+18 °C -9.2e+18 °C");
    EXPECT_EQ(lines[3], "  Load        1.845e+19 % 1.845e+19 % 1.845e+19 % 1.845e+19 %");
    EXPECT_EQ(lines[4], "  Free memory    16.0 EiB    16.0 EiB    16.0 EiB    16.0 EiB");
}

TEST_F(MonitorViews, WriteLinesWhereATableDoesNotFit) {
    const auto text = show({true, false, true, 60, 40});
    EXPECT_EQ(text.find("\x1b[11A"), std::string::npos);
    EXPECT_NE(text.find("     0.2 s  0100"), std::string::npos);
}

TEST_F(MonitorViews, WriteLinesWhereTheTerminalHasTooFewForTheTable) {
    // Eleven lines of the table and the one that the cursor stands on.
    EXPECT_NE(show({true, false, true, 80, 12}).find("\x1b[11A"), std::string::npos);
    const auto text = show({true, false, true, 80, 11});
    EXPECT_FALSE(std::regex_search(text, std::regex("\x1b\\[[0-9]+A"))) << text;
    EXPECT_NE(text.find("     0.2 s  0100"), std::string::npos);
    EXPECT_NE(text.find("  Temperature       40 °C     42.5 °C       45 °C"), std::string::npos)
        << "the extremes come at the end";
}

TEST_F(MonitorViews, ShowTheExtremesOfMoreCardsThanATerminalHasRoomFor) {
    cards_.resize(6, cards_[0]);
    const auto text = show({true, false, true, 80, 24});
    EXPECT_NE(text.find("Minimum     Average     Maximum"), std::string::npos) << text;
    EXPECT_EQ(text.find("Sample 2/2"), std::string::npos);
    EXPECT_NE(show({true, false, true, 80, 28}).find("Sample 2/2"), std::string::npos)
        << "25 lines of the table and three below";
}

TEST_F(MonitorViews, PictureTheLastSamplesWhereTheTerminalShowsIt) {
    EXPECT_NE(show({true, false, true, 80, 40}).find("▁▅"), std::string::npos) << "40 and 45 of 10 degrees";
    const auto ascii = show({true, false, false, 80, 40});
    EXPECT_EQ(ascii.find("History"), std::string::npos);
    EXPECT_EQ(ascii.find("▁"), std::string::npos);
}

TEST(BarPictures, FillTheirHeightAndLeaveGaps) {
    EXPECT_EQ(barPicture({0.0, 50.0, std::nullopt, 100.0, 99.0}, 0, 100), "▁▅ ██");
    EXPECT_EQ(barPicture({-10.0, 500.0}, 0, 100), "▁█") << "what is outside stays inside";
}

} // namespace
} // namespace vexil::host
