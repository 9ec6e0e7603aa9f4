#pragma once

#include "host/core/language.h"
#include "host/core/live_values.h"
#include "host/core/plan_execution.h"
#include "host/core/sample_summary.h"

#include <chrono>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

// Values as people read them, the same on a terminal and in a report.
namespace vexil::host {

inline constexpr std::size_t anyWidth = std::numeric_limits<std::size_t>::max();

/// "45 °C", "7 %", "1.9 GiB", each with its label; only the values that are there.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> describeLive(const LiveValues& live,
                                                                            const Language& language);

/// One of them: "45 °C", "7 %", "1.9 GiB". A mean of degrees or percents has a decimal. What takes more than
/// `width` columns, which are at least 10, is shown as a power of ten: "-9e+18 °C".
[[nodiscard]] std::string describeValue(LiveKind kind, double value, std::size_t width = anyWidth);
[[nodiscard]] std::string describeMean(LiveKind kind, double value, std::size_t width = anyWidth);
/// The key of its label.
[[nodiscard]] const char* liveKindKey(LiveKind kind);

/// "12 ms", "1.2 s", "2:05 min", "1:00:00 h".
[[nodiscard]] std::string describeDuration(std::chrono::duration<double> duration);

/// "3 passed, 1 failed, 2 without a verdict": without the counts that are 0, except the first.
[[nodiscard]] std::string describeCounts(const RunSummary& summary, const Language& language);

/// The key of the sentence that an exit code stands for.
[[nodiscard]] const char* verdictKey(ExitCode code);

/// "0100", or a word for a card that has no id.
[[nodiscard]] std::string describeId(const core::DeviceRecord& card, const Language& language);

} // namespace vexil::host
