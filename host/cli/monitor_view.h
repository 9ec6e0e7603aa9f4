#pragma once

#include "host/cli/monitor_table.h"

namespace vexil::host {

/// Shows samples as they come: a table that is drawn anew in its place on a terminal with room for it, and
/// elsewhere a line for each card and sample, with the table of extremes and averages at the end.
class MonitorView {
public:
    /// `cards` must outlive the view. `count`: the samples to come; 0 if nobody knows.
    MonitorView(Terminal& terminal, const Language& language, const std::vector<core::DeviceRecord>& cards,
                std::uint64_t count);

    void show(const Sample& sample);
    /// After the last sample.
    void finish();

private:
    void showTable(const Sample& sample);
    void showLines(const Sample& sample);
    [[nodiscard]] std::string plainLine(const std::string& time, const std::string& id,
                                        const std::array<std::string, liveKinds.size()>& values) const;

    Terminal& terminal_;
    const Language& language_;
    const std::vector<core::DeviceRecord>& cards_;
    std::uint64_t count_;
    MonitorTable table_;
    bool inPlace_;
    std::uint64_t shown_ = 0;
    std::size_t idWidth_ = 0;
};

} // namespace vexil::host
