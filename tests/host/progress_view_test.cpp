#include "host/cli/progress_view.h"
#include "host/core/run_plan.h"
#include "host/fake_module/fake_module.h"
#include "host/platform/process.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vexil::host {
namespace {

using Seconds = std::chrono::duration<double>;

class ProgressViews : public ::testing::Test {
protected:
    /// What is written for one run with a look at it in between.
    [[nodiscard]] std::string show(const TerminalTraits& traits, std::uint8_t percent, Seconds elapsed) {
        std::ostringstream out;
        Terminal terminal(out, traits);
        const auto plan = planRuns(module_, cards_, {"0100", "1", {}}, {});
        ProgressView view(terminal, language_, cards_, plan, cancel_);
        view.runStarted(0, plan.runs[0].test->descriptor());
        out.str("");
        view.runProgress(percent, elapsed);
        return out.str();
    }
    [[nodiscard]] static std::size_t count(const std::string& text, const std::string& part) {
        std::size_t number = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
            ++number;
        }
        return number;
    }

    tests::FakeModule module_{tests::FakeCase::Scripted};
    std::vector<Card> cards_ = scanCards(module_);
    Language language_ = loadLanguage(platform::programFolder() / "languages", "en", "");
    volatile std::uint8_t cancel_ = 0;
};

TEST_F(ProgressViews, DrawABarOnATerminal) {
    const auto line = show({true, false, true, 80}, 50, Seconds(65));
    EXPECT_EQ(line.front(), '\r');
    EXPECT_EQ(count(line, "█"), 16U);
    EXPECT_EQ(count(line, "░"), 16U);
    EXPECT_NE(line.find("Video memory test"), std::string::npos);
    EXPECT_NE(line.find(" 50 %"), std::string::npos);
    EXPECT_NE(line.find("1:05"), std::string::npos);
    EXPECT_EQ(line.find('\n'), std::string::npos);
}

TEST_F(ProgressViews, KeepToAsciiWhereTheTerminalShowsNothingElse) {
    const auto line = show({true, false, false, 80}, 25, Seconds(1));
    EXPECT_EQ(count(line, "#"), 8U);
    for (const char c : line) {
        EXPECT_LT(static_cast<unsigned char>(c), 0x80U);
    }
}

TEST_F(ProgressViews, FitTheBarIntoTheTerminal) {
    for (const unsigned width : {45U, 60U, 80U, 200U}) {
        const auto line = show({true, false, true, width}, 100, Seconds(600));
        // Less than the width: a line that fills the last column would scroll.
        EXPECT_LT(columns(line) - columns("\r\x1b[K"), width) << width;
    }
}

TEST_F(ProgressViews, ShowAllOfItForAValueBeyond100) {
    const auto line = show({true, false, true, 80}, 101, Seconds(1));
    EXPECT_EQ(count(line, "█"), 32U);
    EXPECT_NE(line.find("100 %"), std::string::npos);
}

TEST_F(ProgressViews, WriteALineNowAndThenWhereNobodyWatches) {
    EXPECT_EQ(show({}, 50, Seconds(4.9)), "");
    EXPECT_EQ(show({}, 50, Seconds(5.1)), "    Video memory test   50 %  0:05\n");
}

TEST_F(ProgressViews, ShowMessagesTranslatedBelowTheResult) {
    std::ostringstream out;
    Terminal terminal(out, {});
    const auto plan = planRuns(module_, cards_, {"0100", "1", {}}, {});
    ProgressView view(terminal, language_, cards_, plan, cancel_);
    view.runStarted(0, plan.runs[0].test->descriptor());
    TestRun run;
    run.name = "VIDEO_MEMORY_TEST";
    run.result = core::TestResult::Passed;
    run.duration = Seconds(1.2);
    run.messages = {{0, "TOTAL_SURFACES_TESTED: 50/50"}};
    view.runFinished(run);
    EXPECT_EQ(out.str(), "\nNVIDIA graphics card  0100\n"
                         "  + Video memory test  Passed                1.2 s\n"
                         "      Surfaces tested: 50/50\n");
}

TEST_F(ProgressViews, TellOnceThatAStopIsUnderWay) {
    std::ostringstream out;
    Terminal terminal(out, {});
    const auto plan = planRuns(module_, cards_, {"0100", "1", {}}, {});
    ProgressView view(terminal, language_, cards_, plan, cancel_);
    view.runStarted(0, plan.runs[0].test->descriptor());
    cancel_ = 1;
    view.runProgress(1, Seconds(0.1));
    view.runProgress(1, Seconds(0.2));
    EXPECT_EQ(count(out.str(), "Stopping"), 1U);
}

} // namespace
} // namespace vexil::host
