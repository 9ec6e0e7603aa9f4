#include "host/cli/monitor_table.h"

#include "host/core/host_keys.h"
#include "host/core/value_text.h"

#include <algorithm>

namespace vexil::host {

namespace {

constexpr std::size_t valueWidth = 12; ///< "1023.9 GiB" with a gap before it
constexpr std::size_t textWidth = valueWidth - 1;
constexpr std::size_t valueColumns = 4;
constexpr std::size_t indent = 2;
constexpr std::size_t gap = 2;
constexpr std::size_t narrowestPicture = 8;
constexpr std::size_t widestPicture = 40;
constexpr const char* noValue = "--";

/// What the whole height of a picture stands for at least, so that a sensor's last digit does not look like a
/// storm. Load has the same scale on every card.
struct Scale {
    double least;
    bool fromZero;
};
constexpr std::array<Scale, liveKinds.size()> scales = {
    {{10, false}, {100, true}, {64.0 * 1024 * 1024, false}}};

} // namespace

std::string barPicture(const std::deque<std::optional<double>>& values, double low, double high) {
    constexpr std::array bars = {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    std::string picture;
    for (const auto& value : values) {
        if (!value) {
            picture += ' ';
            continue;
        }
        const auto part = (*value - low) / (high - low) * static_cast<double>(bars.size());
        picture +=
            bars[static_cast<std::size_t>(std::clamp(part, 0.0, static_cast<double>(bars.size() - 1)))];
    }
    return picture;
}

MonitorTable::MonitorTable(const Terminal& terminal, const Language& language,
                           const std::vector<core::DeviceRecord>& cards)
    : terminal_(terminal), language_(language), cards_(cards), values_(cards.size()) {
    for (const auto kind : liveKinds) {
        labelWidth_ = std::max(labelWidth_, columns(language.text(liveKindKey(kind))));
    }
    const std::size_t available = terminal.traits().width;
    if (terminal.traits().utf8 && available >= width() + gap + narrowestPicture) {
        pictureWidth_ = std::min(available - width() - gap, widestPicture);
    }
}

std::size_t MonitorTable::width() const { return indent + labelWidth_ + valueColumns * valueWidth; }

void MonitorTable::add(const Sample& sample) {
    for (std::size_t i = 0; i < values_.size(); ++i) {
        values_[i].summary.add(sample.cards[i]);
        for (const auto kind : liveKinds) {
            auto& row = values_[i].rows[static_cast<std::size_t>(kind)];
            row.now = valueOf(sample.cards[i], kind);
            row.history.push_back(row.now);
            if (row.history.size() > pictureWidth_) {
                row.history.pop_front();
            }
        }
    }
}

std::vector<std::string> MonitorTable::lines(bool live) const {
    std::vector<std::string> lines = {headings(live)};
    for (std::size_t i = 0; i < cards_.size(); ++i) {
        const auto id = describeId(cards_[i], language_);
        const auto left = width() - std::min(width(), columns(id) + gap);
        auto name = language_.text(cards_[i].name);
        name = columns(name) > left ? fit(name, left) : name;
        lines.push_back(terminal_.paint(name, Style::Bold) + "  " + terminal_.paint(id, Style::Dim));
        for (const auto kind : liveKinds) {
            lines.push_back(line(values_[i], kind, live));
        }
    }
    return lines;
}

std::string MonitorTable::headings(bool live) const {
    std::string text(indent + labelWidth_, ' ');
    for (const auto* key : {keys::now, keys::minimum, keys::average, keys::maximum}) {
        if (live || key != keys::now) {
            text += alignRight(language_.text(key), valueWidth);
        }
    }
    if (live && pictureWidth_ > 0) {
        text += "  " + language_.text(keys::history);
    }
    return terminal_.paint(text, Style::Dim);
}

std::string MonitorTable::line(const CardRows& card, LiveKind kind, bool live) const {
    const auto& summary = card.summary.of(kind);
    const auto& now = card.rows[static_cast<std::size_t>(kind)].now;
    auto text = std::string(indent, ' ') +
                terminal_.paint(fit(language_.text(liveKindKey(kind)), labelWidth_), Style::Dim);
    if (live) {
        text +=
            now ? terminal_.paint(alignRight(describeValue(kind, *now, textWidth), valueWidth), Style::Bold)
                : terminal_.paint(alignRight(noValue, valueWidth), Style::Dim);
    }
    if (summary.count() == 0) {
        for (std::size_t i = 1; i < valueColumns; ++i) {
            text += terminal_.paint(alignRight(noValue, valueWidth), Style::Dim);
        }
        return text;
    }
    text += alignRight(describeValue(kind, summary.minimum(), textWidth), valueWidth) +
            alignRight(describeMean(kind, summary.average(), textWidth), valueWidth) +
            alignRight(describeValue(kind, summary.maximum(), textWidth), valueWidth);
    return live && pictureWidth_ > 0 ? text + "  " + terminal_.paint(picture(card, kind), Style::Good) : text;
}

std::string MonitorTable::picture(const CardRows& card, LiveKind kind) const {
    const auto& scale = scales[static_cast<std::size_t>(kind)];
    const auto& summary = card.summary.of(kind);
    const double low = scale.fromZero ? 0 : summary.minimum();
    const double high = low + std::max(summary.maximum() - low, scale.least);
    return barPicture(card.rows[static_cast<std::size_t>(kind)].history, low, high);
}

} // namespace vexil::host
