#include "module/video_card/statistics/composite_statistics.h"

#include <algorithm>
#include <utility>

namespace vexil::module::video_card {

using Source = std::unique_ptr<VideoCardStatistics>;

CompositeVideCardStatistics::CompositeVideCardStatistics(std::vector<Source> sources)
    : sources_(std::move(sources)) {}

bool CompositeVideCardStatistics::matches(const AdapterRecord& adapter) const {
    return std::ranges::all_of(sources_,
                               [&](const Source& source) { return source && source->matches(adapter); });
}

template <typename Value, typename Query>
VideoCardStatisticsStatus CompositeVideCardStatistics::firstAvailable(Query query, Value& value) const {
    for (const auto& source : sources_) {
        // Only the value 1 passes the question on: a source's own numbers count as an answer.
        if (source && query(source, value) != VideoCardStatisticsStatus::Unavailable) {
            return VideoCardStatisticsStatus::Ok;
        }
    }
    return VideoCardStatisticsStatus::Unavailable;
}

VideoCardStatisticsStatus CompositeVideCardStatistics::getTemperature(std::int64_t& celsius) {
    return firstAvailable(
        [](const Source& source, std::int64_t& value) { return source->getTemperature(value); }, celsius);
}

VideoCardStatisticsStatus CompositeVideCardStatistics::getUsage(std::uint64_t& percent) {
    return firstAvailable([](const Source& source, std::uint64_t& value) { return source->getUsage(value); },
                          percent);
}

VideoCardStatisticsStatus CompositeVideCardStatistics::getTotalMemory(std::uint64_t& bytes) {
    return firstAvailable(
        [](const Source& source, std::uint64_t& value) { return source->getTotalMemory(value); }, bytes);
}

VideoCardStatisticsStatus CompositeVideCardStatistics::getFreeMemory(std::uint64_t& bytes) {
    return firstAvailable(
        [](const Source& source, std::uint64_t& value) { return source->getFreeMemory(value); }, bytes);
}

} // namespace vexil::module::video_card
