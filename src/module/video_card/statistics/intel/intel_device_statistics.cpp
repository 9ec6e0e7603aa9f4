#include "module/video_card/statistics/intel/intel_device_statistics.h"

#include "module/video_card/adapter_record.h"
#include "module/video_card/vocabulary.h"

#include <limits>

namespace vexil::module::video_card {

namespace {

constexpr std::int64_t failedReading = -999999;

/// A number beyond the 64 bits becomes the lowest one, which is what the processor's own conversion gives.
std::int64_t truncate(double value) {
    constexpr double limit = 9223372036854775808.0; // 2 to the 63rd
    return value >= -limit && value < limit ? static_cast<std::int64_t>(value)
                                            : std::numeric_limits<std::int64_t>::min();
}

} // namespace

bool IntelDeviceStatistics::matches(const AdapterRecord& adapter) const {
    return adapter.vendorId == vocabulary::intelVendorId;
}

VideoCardStatisticsStatus IntelDeviceStatistics::getTemperature(std::int64_t& celsius) {
    double reading = 0;
    if (monitor_.getPackageTemperature(reading) != 0) {
        celsius = failedReading;
        return VideoCardStatisticsStatus::Unavailable;
    }
    celsius = truncate(reading);
    return VideoCardStatisticsStatus::Ok;
}

StatisticsSources& IntelDeviceStatisticsScanner::scan(StatisticsSources& sources) {
    sources.push_back(std::make_unique<IntelDeviceStatistics>(machine_));
    return sources;
}

} // namespace vexil::module::video_card
