#include "host/cli/commands.h"

#include "host/cli/progress_view.h"
#include "host/core/host_keys.h"
#include "host/core/json_documents.h"
#include "host/core/value_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace vexil::host {

using system::ResultRecord;

namespace {

/// A record as a line of the table.
struct LogLine {
    std::string id;
    std::string time;
    std::string card;
    std::string test;
    std::string result;
    std::string duration;
    TestRun run; ///< what its result is painted and marked by
};

/// "2026-01-31 23:59:59" of what the log has as RFC 3339; another text as it stands.
std::string readableTime(const std::string& time) {
    constexpr std::size_t seconds = 19;
    if (time.size() < seconds || time[10] != 'T') {
        return time;
    }
    return time.substr(0, 10) + ' ' + time.substr(11, seconds - 11);
}

std::string readableDuration(const std::string& text) {
    double seconds = 0;
    const auto* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, seconds);
    return error == std::errc() && last == end ? describeDuration(std::chrono::duration<double>(seconds))
                                               : text;
}

/// The number of a result that the log has by its name; one that is none where the name is not known.
std::uint8_t resultOf(const std::string& name) {
    std::uint8_t result = 0;
    while (result <= core::TestResult::NotCompleted && name != resultName(result)) {
        ++result;
    }
    return result;
}

LogLine lineOf(const ResultRecord& record, const Language& language) {
    LogLine line;
    line.id = std::to_string(record.id);
    line.time = readableTime(record.testStartTimestamp);
    line.card = record.deviceDisplayName;
    line.test = language.text(record.testName);
    line.run.result = resultOf(record.testStatus);
    line.result = line.run.result > core::TestResult::NotCompleted
                      ? record.testStatus
                      : language.text(resultKey(line.run.result));
    line.duration = readableDuration(record.testDuration);
    return line;
}

class LogTable {
public:
    LogTable(const CommandContext& context, const std::vector<ResultRecord>& records)
        : terminal_(context.terminal) {
        const auto& language = context.language;
        title_ = {"#",
                  language.text(keys::startedAt) + " (UTC)",
                  language.text(keys::card),
                  language.text(keys::test),
                  language.text(keys::result),
                  language.text(keys::time),
                  {}};
        for (const auto& record : records) {
            lines_.push_back(lineOf(record, language));
        }
        const auto widest = [&](std::string LogLine::*column) {
            std::size_t width = columns(title_.*column);
            for (const auto& line : lines_) {
                width = std::max(width, columns(line.*column));
            }
            return width;
        };
        id_ = widest(&LogLine::id);
        time_ = widest(&LogLine::time);
        card_ = widest(&LogLine::card);
        test_ = widest(&LogLine::test);
        result_ = widest(&LogLine::result);
        share(id_ + time_ + result_ + widest(&LogLine::duration) + marginAndGaps);
    }

    void show() {
        terminal_.line(terminal_.paint(
            "    " + text(title_) + "  " + fit(title_.result, result_) + "  " + title_.duration, Style::Dim));
        for (const auto& line : lines_) {
            const auto style = resultStyle(line.run);
            terminal_.line(fmt::format("  {} {}  {}  {}",
                                       terminal_.paint(resultMark(terminal_, line.run), style), text(line),
                                       terminal_.paint(fit(line.result, result_), style), line.duration));
        }
    }

private:
    static constexpr std::size_t marginAndGaps = 4 + 5 * 2;
    static constexpr std::size_t narrowest = 8;

    /// Gives card and test what the other columns leave of the terminal, the narrower one first.
    void share(std::size_t others) {
        const std::size_t width = terminal_.traits().width;
        const std::size_t left = std::max(width > others ? width - others : 0, 2 * narrowest);
        if (card_ + test_ <= left) {
            return;
        }
        auto& narrower = card_ < test_ ? card_ : test_;
        auto& wider = card_ < test_ ? test_ : card_;
        narrower = std::min(narrower, std::max(left / 2, narrowest));
        wider = left - narrower;
    }

    [[nodiscard]] std::string text(const LogLine& line) const {
        return std::string(id_ - std::min(id_, columns(line.id)), ' ') + line.id + "  " +
               fit(line.time, time_) + "  " + fit(line.card, card_) + "  " + fit(line.test, test_);
    }

    Terminal& terminal_;
    LogLine title_;
    std::vector<LogLine> lines_;
    std::size_t id_ = 0;
    std::size_t time_ = 0;
    std::size_t card_ = 0;
    std::size_t test_ = 0;
    std::size_t result_ = 0;
};

std::string describeCount(std::size_t count, const Language& language) {
    return std::to_string(count) + ' ' + language.text(count == 1 ? keys::logRecord : keys::logRecords);
}

} // namespace

ExitCode listLogCommand(const CommandContext& context) {
    auto& terminal = context.terminal;
    const auto& language = context.language;
    RunLog log(context.environment.logPlace());
    const auto records = log.read();
    if (context.options.json) {
        context.environment.out << logDocument(log.place(), records) << std::flush;
        return ExitCode::AllPassed;
    }
    terminal.line(terminal.paint(language.text(keys::logTitle), Style::Bold) + "  " +
                  terminal.paint(log.place(), Style::Dim));
    if (records.empty()) {
        terminal.paragraph(language.text(keys::logEmpty), 0);
        return ExitCode::AllPassed;
    }
    terminal.line();
    LogTable(context, records).show();
    terminal.line();
    terminal.paragraph(describeCount(records.size(), language), 0, Style::Dim);
    if (log.exhausted()) {
        terminal.paragraph(language.text(keys::logExhausted), 0, Style::Warning);
    }
    return ExitCode::AllPassed;
}

ExitCode clearLogCommand(const CommandContext& context) {
    const auto& language = context.language;
    RunLog log(context.environment.logPlace());
    const auto count = log.clear();
    context.terminal.paragraph(count == 0
                                   ? language.text(keys::logEmpty)
                                   : language.text(keys::logCleared) + ": " + describeCount(count, language),
                               0);
    return ExitCode::AllPassed;
}

} // namespace vexil::host
