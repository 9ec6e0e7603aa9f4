#include "host/cli/monitor_view.h"

#include "host/core/host_keys.h"
#include "host/core/value_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace vexil::host {

namespace {

constexpr std::size_t timeWidth = 10;
constexpr std::size_t valueWidth = 13;
constexpr std::size_t linesBelow = 3; ///< a blank, the sample's line and the one that the cursor stands on

std::string clock(std::chrono::duration<double> elapsed) {
    const auto seconds = static_cast<long long>(elapsed.count());
    return seconds < 3600 ? fmt::format("{}:{:02}", seconds / 60, seconds % 60)
                          : fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

} // namespace

MonitorView::MonitorView(Terminal& terminal, const Language& language,
                         const std::vector<core::DeviceRecord>& cards, std::uint64_t count)
    : terminal_(terminal), language_(language), cards_(cards), count_(count),
      table_(terminal, language, cards),
      inPlace_(terminal.traits().interactive && terminal.traits().width >= table_.width() &&
               terminal.traits().height >= table_.lines(true).size() + linesBelow) {
    idWidth_ = columns(language.text(keys::card));
    for (const auto& card : cards) {
        idWidth_ = std::max(idWidth_, columns(describeId(card, language)));
    }
}

void MonitorView::show(const Sample& sample) {
    table_.add(sample);
    if (shown_++ == 0) {
        terminal_.line();
    }
    if (inPlace_) {
        showTable(sample);
    } else {
        showLines(sample);
    }
}

void MonitorView::showTable(const Sample& sample) {
    const auto number =
        count_ == 0 ? std::to_string(sample.number) : fmt::format("{}/{}", sample.number, count_);
    auto lines = table_.lines(true);
    lines.emplace_back();
    lines.push_back(terminal_.paint(fit(fmt::format("{} {}   {} {}", language_.text(keys::sample), number,
                                                    language_.text(keys::time), clock(sample.elapsed)),
                                        table_.width()),
                                    Style::Dim));
    terminal_.redrawBlock(lines);
}

std::string MonitorView::plainLine(const std::string& time, const std::string& id,
                                   const std::array<std::string, liveKinds.size()>& values) const {
    auto text = alignRight(time, timeWidth) + "  " + fit(id, idWidth_);
    for (const auto& value : values) {
        text += alignRight(value, valueWidth);
    }
    return text;
}

void MonitorView::showLines(const Sample& sample) {
    std::array<std::string, liveKinds.size()> values;
    if (sample.number == 1) {
        for (const auto kind : liveKinds) {
            values[static_cast<std::size_t>(kind)] = language_.text(liveKindKey(kind));
        }
        terminal_.line(terminal_.paint(
            plainLine(language_.text(keys::time), language_.text(keys::card), values), Style::Dim));
    }
    for (std::size_t i = 0; i < cards_.size(); ++i) {
        for (const auto kind : liveKinds) {
            const auto value = valueOf(sample.cards[i], kind);
            values[static_cast<std::size_t>(kind)] =
                value ? describeValue(kind, *value, valueWidth - 1) : "--";
        }
        terminal_.line(plainLine(fmt::format("{:.1f} s", sample.elapsed.count()),
                                 describeId(cards_[i], language_), values));
    }
}

void MonitorView::finish() {
    if (inPlace_ || shown_ == 0) {
        return;
    }
    terminal_.line();
    for (const auto& line : table_.lines(false)) {
        terminal_.line(line);
    }
}

} // namespace vexil::host
