#pragma once

#include "core/device_record.h"
#include "host/cli/terminal.h"
#include "host/core/language.h"
#include "host/core/monitoring.h"
#include "host/core/sample_summary.h"

#include <array>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace vexil::host {

/// The samples of a monitoring as a table: a card's values with their extremes and averages, and where the
/// terminal shows it a picture of the last samples.
class MonitorTable {
public:
    /// `cards` must outlive the table.
    MonitorTable(const Terminal& terminal, const Language& language,
                 const std::vector<core::DeviceRecord>& cards);

    void add(const Sample& sample);

    /// No line is wider than `width()`, unless the terminal has room for the picture as well. `live` adds
    /// the newest values and the picture.
    [[nodiscard]] std::vector<std::string> lines(bool live) const;
    /// Columns that the table needs at least.
    [[nodiscard]] std::size_t width() const;

private:
    struct Row {
        std::optional<double> now;
        std::deque<std::optional<double>> history;
    };
    struct CardRows {
        SampleSummary summary;
        std::array<Row, liveKinds.size()> rows;
    };

    [[nodiscard]] std::string headings(bool live) const;
    [[nodiscard]] std::string line(const CardRows& card, LiveKind kind, bool live) const;
    [[nodiscard]] std::string picture(const CardRows& card, LiveKind kind) const;

    const Terminal& terminal_;
    const Language& language_;
    const std::vector<core::DeviceRecord>& cards_;
    std::vector<CardRows> values_;
    std::size_t labelWidth_ = 0;
    std::size_t pictureWidth_ = 0; ///< 0: no picture
};

/// A bar an eighth to eight eighths high for each value, a blank for one that is missing; `low` to `high` is
/// the whole height.
[[nodiscard]] std::string barPicture(const std::deque<std::optional<double>>& values, double low,
                                     double high);

} // namespace vexil::host
