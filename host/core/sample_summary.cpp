#include "host/core/sample_summary.h"

#include <algorithm>

namespace vexil::host {

namespace {

template <typename Value>
std::optional<double> asNumber(const std::optional<Value>& value) {
    return value ? std::optional(static_cast<double>(*value)) : std::nullopt;
}

} // namespace

std::optional<double> valueOf(const LiveValues& values, LiveKind kind) {
    switch (kind) {
    case LiveKind::Temperature:
        return asNumber(values.temperatureCelsius);
    case LiveKind::Load:
        return asNumber(values.usagePercent);
    default:
        return asNumber(values.freeMemoryBytes);
    }
}

void ValueSummary::add(double value) {
    minimum_ = count_ == 0 ? value : std::min(minimum_, value);
    maximum_ = count_ == 0 ? value : std::max(maximum_, value);
    sum_ += value;
    ++count_;
}

void SampleSummary::add(const LiveValues& values) {
    for (const auto kind : liveKinds) {
        if (const auto value = valueOf(values, kind)) {
            values_[static_cast<std::size_t>(kind)].add(*value);
        }
    }
}

} // namespace vexil::host
