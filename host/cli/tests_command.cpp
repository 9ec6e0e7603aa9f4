#include "host/cli/commands.h"

#include "host/core/host_keys.h"
#include "host/core/json_documents.h"
#include "host/core/test_catalogue.h"
#include "host/core/value_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace vexil::host {

namespace {

std::string describeSupport(const CatalogueEntry& entry, const std::vector<Card>& cards,
                            const Language& language) {
    if (!entry.available) {
        return language.text(keys::notAvailable);
    }
    if (entry.supportedBy.empty()) {
        return cards.empty() ? std::string() : language.text(keys::noCardSupports);
    }
    if (entry.supportedBy.size() == cards.size() && cards.size() > 1) {
        return language.text(keys::everyCard);
    }
    std::string list;
    for (const auto card : entry.supportedBy) {
        list += (list.empty() ? "" : ", ") + describeId(cards[card].record, language);
    }
    return list;
}

class TestList {
public:
    TestList(const CommandContext& context, const std::vector<CatalogueEntry>& tests,
             const std::vector<Card>& cards)
        : context_(context), tests_(tests), cards_(cards) {
        for (const auto& entry : tests) {
            nameWidth_ = std::max(nameWidth_, columns(context.language.text(entry.descriptor.name)));
        }
    }

    void showGroup(const std::string& group) {
        auto& terminal = context_.terminal;
        terminal.line();
        terminal.line(terminal.paint(context_.language.text(group), Style::Bold));
        for (const auto& entry : tests_) {
            if (entry.descriptor.group == group) {
                showTest(entry);
            }
        }
    }

private:
    void showTest(const CatalogueEntry& entry) {
        auto& terminal = context_.terminal;
        const auto& language = context_.language;
        const bool usable = entry.available && !(entry.supportedBy.empty() && !cards_.empty());
        terminal.line(fmt::format(
            "{:4}  {}  {}", entry.descriptor.id,
            terminal.paint(fit(language.text(entry.descriptor.name), nameWidth_),
                           usable ? Style::Plain : Style::Dim),
            terminal.paint(describeSupport(entry, cards_, language), usable ? Style::Good : Style::Dim)));
        terminal.paragraph(language.text(entry.descriptor.tooltip), 6, Style::Dim);
        for (const auto& parameter : entry.parameters) {
            terminal.line(fmt::format("      {:<12}  {}, {}: {}  {}", parameter.key,
                                      language.text(parameter.name), language.text(keys::defaultValue),
                                      parameter.defaultValue, parameter.range));
        }
    }

    const CommandContext& context_;
    const std::vector<CatalogueEntry>& tests_;
    const std::vector<Card>& cards_;
    std::size_t nameWidth_ = 0;
};

/// In the order of their ranks; tools, of rank 0, come last.
std::vector<std::string> groupsOf(const std::vector<CatalogueEntry>& tests) {
    std::vector<std::pair<std::int32_t, std::string>> groups;
    for (const auto& entry : tests) {
        const auto rank = entry.descriptor.groupRank;
        groups.emplace_back(rank == 0 ? INT32_MAX : rank, entry.descriptor.group);
    }
    std::ranges::sort(groups);
    std::vector<std::string> names;
    for (const auto& [rank, group] : groups) {
        if (names.empty() || names.back() != group) {
            names.push_back(group);
        }
    }
    return names;
}

} // namespace

ExitCode listTestsCommand(const CommandContext& context) {
    const bool json = context.options.json;
    const auto session = openSession(context, false, !json);
    std::vector<Card> cards;
    std::vector<core::DeviceRecord> records;
    for (const auto index : selectCards(session.cards(), context.options.request.card)) {
        cards.push_back(session.cards()[index]);
        records.push_back(cards.back().record);
    }
    const auto facilities = facilitiesOf(context, session);
    const auto tests = listTests(session.module(), cards, facilities);
    if (json) {
        context.environment.out << testsDocument(session.machine(), tests, records, context.language)
                                << std::flush;
        return ExitCode::AllPassed;
    }
    explainScan(context, session);
    if (!facilities.display) {
        context.terminal.paragraph(context.language.text(keys::displayMissing), 0, Style::Dim);
    }
    TestList list(context, tests, cards);
    for (const auto& group : groupsOf(tests)) {
        list.showGroup(group);
    }
    return ExitCode::AllPassed;
}

} // namespace vexil::host
