#pragma once

#include "core/test_run_arguments.h"
#include "module/video_card/stress/rendering/stress_sample.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>

namespace vexil::module::video_card {

/// Sum, extremes and count of one measured value.
template <typename Value>
struct MeasuredValue {
    Value sum = 0;
    Value minimum;
    Value maximum;
    std::uint64_t count = 0;

    void add(Value value) {
        if constexpr (std::is_integral_v<Value>) {
            // The sum of a sensor's nonsense wraps around instead of overflowing.
            using Wrapping = std::make_unsigned_t<Value>;
            sum = static_cast<Value>(static_cast<Wrapping>(sum) + static_cast<Wrapping>(value));
        } else {
            sum += value;
        }
        ++count;
        maximum = std::max(maximum, value);
        minimum = std::min(minimum, value);
    }
};

/// What one run of a stress test measured. The extremes start where any value of a card replaces them.
class StressStatistics {
public:
    explicit StressStatistics(const core::TestRunArguments& arguments)
        : device_(arguments.device), reporter_(arguments.reporter) {}

    /// Takes in each value of the sample whose valid flag is set.
    void addSample(const StressSample& sample);
    /// Sends the lines "MINIMUM", "MAXIMUM" and "AVERAGE", each with an item for each value that was
    /// measured.
    void reportResults() const;

    MeasuredValue<float> fps{0, std::numeric_limits<float>::max(), std::numeric_limits<float>::min()};
    MeasuredValue<std::int64_t> temperature{0, 0x7FFFFFFF, 0}; ///< whole degrees Celsius
    MeasuredValue<std::uint64_t> usage{0, 0xFFFFFFFF, 0};      ///< percent

private:
    std::weak_ptr<core::Device> device_;
    core::TestReporter* reporter_;
};

} // namespace vexil::module::video_card
