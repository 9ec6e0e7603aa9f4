#include "host/cli/progress_view.h"

#include "host/core/host_keys.h"
#include "host/core/value_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace vexil::host {

namespace {

constexpr std::size_t widestName = 52;
constexpr std::size_t narrowestBar = 8;
constexpr std::size_t widestBar = 32;
/// Mark, blanks, percentage and time on the line of a bar.
constexpr std::size_t beside = 24;
constexpr auto noCard = static_cast<std::size_t>(-1);
/// How long a test says nothing where each word is a line of its own.
constexpr std::chrono::duration<double> plainInterval{5.0};

std::string clock(std::chrono::duration<double> elapsed) {
    const auto seconds = static_cast<long long>(elapsed.count());
    return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
}

} // namespace

Style resultStyle(const TestRun& run) {
    if (!run.error.empty()) {
        return Style::Bad;
    }
    return run.result == core::TestResult::Passed   ? Style::Good
           : run.result == core::TestResult::Failed ? Style::Bad
                                                    : Style::Warning;
}

std::string_view resultMark(const Terminal& terminal, const TestRun& run) {
    switch (resultStyle(run)) {
    case Style::Good:
        return terminal.glyph("✓", "+");
    case Style::Bad:
        return terminal.glyph("✗", "x");
    default:
        return "!";
    }
}

ProgressView::ProgressView(Terminal& terminal, const Language& language, const std::vector<Card>& cards,
                           const RunPlan& plan, const volatile std::uint8_t& cancel)
    : terminal_(terminal), language_(language), cards_(cards), cancel_(cancel), runs_(plan.runs.size()),
      shownCard_(noCard) {
    for (const auto& run : plan.runs) {
        nameWidth_ = std::max(nameWidth_, columns(language_.text(run.test->descriptor().name)));
    }
    const std::size_t width = terminal_.traits().width;
    nameWidth_ =
        std::min({nameWidth_, widestName, width > beside + narrowestBar ? width - beside - narrowestBar : 8});
    const auto left = width > beside + nameWidth_ ? width - beside - nameWidth_ : 0;
    barWidth_ = std::clamp(left, narrowestBar, widestBar);
}

std::string ProgressView::bar(unsigned percent) const {
    const std::size_t full = barWidth_ * std::min(percent, 100U) / 100U;
    std::string done;
    std::string rest;
    for (std::size_t i = 0; i < barWidth_; ++i) {
        (i < full ? done : rest) += i < full ? terminal_.glyph("█", "#") : terminal_.glyph("░", ".");
    }
    return terminal_.paint(done, Style::Good) + terminal_.paint(rest, Style::Dim);
}

void ProgressView::runStarted(std::size_t card, const core::TestDescriptor& test) {
    if (shownCard_ != card) {
        shownCard_ = card;
        terminal_.line();
        terminal_.line(terminal_.paint(language_.text(cards_[card].record.name), Style::Bold) + "  " +
                       terminal_.paint(describeId(cards_[card].record, language_), Style::Dim));
    }
    ++started_;
    name_ = language_.text(test.name);
    lastLine_ = {};
    runProgress(0, {});
}

void ProgressView::runProgress(std::uint8_t percent, std::chrono::duration<double> elapsed) {
    // A stress test whose last slice ends late has done more than all of its time.
    const unsigned shown = std::min<unsigned>(percent, 100);
    if (cancel_ != 0 && !stoppingTold_) {
        stoppingTold_ = true;
        terminal_.line("  " + terminal_.paint(language_.text(keys::stopping), Style::Warning));
    }
    if (terminal_.traits().interactive) {
        terminal_.redraw(fmt::format("    {}  {} {:3} %  {:>5}", fit(name_, nameWidth_), bar(shown), shown,
                                     clock(elapsed)));
    } else if (elapsed - lastLine_ >= plainInterval) {
        lastLine_ = elapsed;
        terminal_.line(fmt::format("    {}  {:3} %  {}", fit(name_, nameWidth_), shown, clock(elapsed)));
    }
}

void ProgressView::runFinished(const TestRun& run) {
    const auto style = resultStyle(run);
    const auto result = language_.text(resultKey(run.result));
    terminal_.line(fmt::format("  {} {}  {}  {}", terminal_.paint(resultMark(terminal_, run), style),
                               fit(name_, nameWidth_), terminal_.paint(fit(result, 20), style),
                               terminal_.paint(describeDuration(run.duration), Style::Dim)));
    for (const auto& message : run.messages) {
        for (const auto& text : language_.lines(message.key)) {
            terminal_.paragraph(text, 6, style == Style::Good ? Style::Dim : Style::Plain);
        }
    }
    if (!run.error.empty()) {
        terminal_.paragraph(run.error, 6, Style::Bad);
    }
}

} // namespace vexil::host
