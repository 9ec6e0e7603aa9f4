#include "host/cli/commands.h"

#include "host/core/json_documents.h"
#include "host/core/value_text.h"

#include <algorithm>

namespace vexil::host {

namespace {

/// A card's rows and live values as people read them.
std::vector<std::pair<std::string, std::string>>
describeRows(const core::DeviceRecord& card, const LiveValues& live, const Language& language) {
    std::vector<std::pair<std::string, std::string>> rows;
    for (const auto& [key, value] : card.rows) {
        rows.emplace_back(language.text(key), value);
    }
    const auto values = describeLive(live, language);
    rows.insert(rows.end(), values.begin(), values.end());
    return rows;
}

void showCard(const CommandContext& context, const core::DeviceRecord& card, const LiveValues& live) {
    auto& terminal = context.terminal;
    const auto& language = context.language;
    terminal.line();
    terminal.line(terminal.paint(language.text(card.name), Style::Bold) + "  " +
                  terminal.paint(describeId(card, language), Style::Dim));
    const auto rows = describeRows(card, live, language);
    std::size_t width = 0;
    for (const auto& row : rows) {
        width = std::max(width, columns(row.first));
    }
    for (const auto& [label, value] : rows) {
        terminal.line("  " + terminal.paint(fit(label, width), Style::Dim) + "  " + value);
    }
    for (const auto& notice : card.notices) {
        terminal.paragraph("! " + language.text(notice), 2, Style::Warning);
    }
}

} // namespace

ExitCode listCardsCommand(const CommandContext& context) {
    const bool json = context.options.json;
    const auto session = openSession(context, false, !json);
    const auto live =
        readLiveValues(session.cards(), liveSources(session.module(), context.environment.hardwareThreads));
    if (json) {
        context.environment.out << cardsDocument(session.machine(), session.records(), live, context.language)
                                << std::flush;
        return ExitCode::AllPassed;
    }
    explainScan(context, session);
    for (std::size_t i = 0; i < session.cards().size(); ++i) {
        showCard(context, session.cards()[i].record, live[i]);
    }
    return ExitCode::AllPassed;
}

} // namespace vexil::host
