#pragma once

#include "host/core/live_values.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace vexil::host {

/// The kinds of live values, in the order in which they are shown.
enum class LiveKind : std::size_t { Temperature, Load, FreeMemory };
inline constexpr std::array liveKinds = {LiveKind::Temperature, LiveKind::Load, LiveKind::FreeMemory};

/// One value as a number in its own unit: degrees Celsius, percent, bytes.
[[nodiscard]] std::optional<double> valueOf(const LiveValues& values, LiveKind kind);

/// The extremes and the mean of one value. A moment without the value counts for nothing.
class ValueSummary {
public:
    void add(double value);

    [[nodiscard]] std::uint64_t count() const { return count_; }
    // Defined once a value has come.
    [[nodiscard]] double minimum() const { return minimum_; }
    [[nodiscard]] double maximum() const { return maximum_; }
    [[nodiscard]] double average() const { return sum_ / static_cast<double>(count_); }

private:
    std::uint64_t count_ = 0;
    double minimum_ = 0;
    double maximum_ = 0;
    double sum_ = 0;
};

/// The summaries of a card's values.
class SampleSummary {
public:
    void add(const LiveValues& values);

    [[nodiscard]] const ValueSummary& of(LiveKind kind) const {
        return values_[static_cast<std::size_t>(kind)];
    }

private:
    std::array<ValueSummary, liveKinds.size()> values_;
};

} // namespace vexil::host
