#include "host/core/html_report.h"

#include "host/core/host_keys.h"
#include "host/core/html_style.h"
#include "host/core/value_text.h"

#include <fmt/format.h>

namespace vexil::host {

namespace {

/// Writes one report; every text on the way to the page is translated and escaped.
class Page {
public:
    Page(const Report& report, const Language& language) : report_(report), language_(language) {}

    std::string write() {
        html_ += fmt::format("<!DOCTYPE html>\n<html lang=\"{}\">\n<head>\n<meta charset=\"utf-8\">\n"
                             "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                             "<title>{}</title>\n<style>",
                             escapeHtml(language_.code()), tr(keys::reportTitle));
        html_ += htmlStyle;
        html_ += fmt::format("</style>\n</head>\n<body>\n<main>\n<h1>{}</h1>\n<p class=\"when\">{} {}</p>\n",
                             tr(keys::reportTitle), tr(keys::startedAt), describeTime(report_.startedAt));
        writeVerdict();
        writeCards();
        writeRuns();
        writeOrigin();
        html_ += "</main>\n</body>\n</html>\n";
        return std::move(html_);
    }

private:
    [[nodiscard]] std::string tr(std::string_view key) const { return escapeHtml(language_.text(key)); }

    void writePair(const std::string& label, const std::string& value) {
        html_ += fmt::format("<dt>{}</dt><dd>{}</dd>\n", label, value);
    }

    void writeVerdict() {
        const auto code = report_.exitCode;
        const char* mood = code == ExitCode::AllPassed    ? "good"
                           : code == ExitCode::CardFailed ? "bad"
                                                          : "warn";
        html_ +=
            fmt::format("<div class=\"verdict {}\">{}<div class=\"counts\">{}</div></div>\n", mood,
                        tr(verdictKey(code)), escapeHtml(describeCounts(report_.outcome.summary, language_)));
    }

    void writeCards() {
        html_ += fmt::format("<h2>{}</h2>\n<div class=\"cards\">\n", tr(keys::cards));
        for (std::size_t i = 0; i < report_.cards.size(); ++i) {
            const auto& card = report_.cards[i];
            html_ += fmt::format(
                "<div class=\"sheet\"><span class=\"name\">{}</span><span class=\"id\">{}</span>\n<dl>\n",
                tr(card.name), escapeHtml(describeId(card, language_)));
            for (const auto& [key, value] : card.rows) {
                writePair(tr(key), escapeHtml(value));
            }
            for (const auto& [label, value] : describeLive(report_.live[i], language_)) {
                writePair(escapeHtml(label), escapeHtml(value));
            }
            html_ += "</dl>\n";
            for (const auto& notice : card.notices) {
                html_ += fmt::format("<p class=\"notice warn\">{}</p>\n", tr(notice));
            }
            html_ += "</div>\n";
        }
        html_ += "</div>\n";
    }

    void writeRuns() {
        html_ += fmt::format("<h2>{}</h2>\n", tr(keys::tests));
        for (std::size_t card = 0; card < report_.cards.size(); ++card) {
            bool open = false;
            for (const auto& run : report_.outcome.runs) {
                if (run.card != card) {
                    continue;
                }
                if (!open) {
                    open = true;
                    writeTableHead(report_.cards[card]);
                }
                writeRun(run);
            }
            html_ += open ? "</tbody>\n</table></div>\n" : "";
        }
    }

    void writeTableHead(const core::DeviceRecord& card) {
        html_ += fmt::format(
            "<div class=\"sheet\"><span class=\"name\">{}</span><span class=\"id\">{}</span>\n<table>\n"
            "<thead><tr><th>{}</th><th>{}</th><th>{}</th></tr></thead>\n<tbody>\n",
            tr(card.name), escapeHtml(describeId(card, language_)), tr(keys::test), tr(keys::result),
            tr(keys::time));
    }

    void writeRun(const TestRun& run) {
        const char* mood = run.result == core::TestResult::Passed   ? "good"
                           : run.result == core::TestResult::Failed ? "bad"
                                                                    : "warn";
        html_ += fmt::format("<tr><td>{}", tr(run.name));
        for (const auto& message : run.messages) {
            for (const auto& line : language_.lines(message.key)) {
                html_ += fmt::format("<div class=\"message\">{}</div>", escapeHtml(line));
            }
        }
        if (!run.error.empty()) {
            html_ += fmt::format("<div class=\"message\">{}</div>", escapeHtml(run.error));
        }
        html_ += fmt::format("</td><td><span class=\"badge {}\">{}</span></td><td>{}</td></tr>\n", mood,
                             tr(resultKey(run.result)), describeDuration(run.duration));
    }

    void writeOrigin() {
        const auto& machine = report_.machine;
        html_ += fmt::format("<h2>{}</h2>\n<div class=\"sheet\"><dl>\n", tr(keys::machine));
        writePair(tr(keys::machine),
                  machine.simulated ? tr(keys::simulatedMachine) + " (" + escapeHtml(machine.scenario) + ')'
                                    : tr(keys::realMachine));
        writePair(tr(keys::operatingSystem), escapeHtml(report_.operatingSystem));
        writePair(tr(keys::module),
                  fmt::format("{} ({}) {}", tr(report_.module.nameKey), escapeHtml(report_.module.shortName),
                              escapeHtml(report_.module.version)));
        html_ += fmt::format("</dl></div>\n<footer>vxe-host {}</footer>\n", escapeHtml(report_.hostVersion));
    }

    const Report& report_;
    const Language& language_;
    std::string html_;
};

} // namespace

std::string escapeHtml(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string htmlReport(const Report& report, const Language& language) {
    return Page(report, language).write();
}

} // namespace vexil::host
