#pragma once

#include "module/video_card/statistics/video_card_statistics.h"

#include <memory>
#include <vector>

namespace vexil::module::video_card {

/// The live values of one card, each from the first of its sources that can tell. Every query asks afresh, so
/// a source that fails now may answer the next time.
class CompositeVideCardStatistics final : public VideoCardStatistics {
public:
    /// One entry for each kind of source in the order ADL, NVAPI, Intel, D3DKMT; any may be empty.
    explicit CompositeVideCardStatistics(std::vector<std::unique_ptr<VideoCardStatistics>> sources);

    /// True when every entry matches, and so for no entry at all.
    [[nodiscard]] bool matches(const AdapterRecord& adapter) const override;
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override;
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override;
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t& bytes) override;
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t& bytes) override;

private:
    template <typename Value, typename Query>
    VideoCardStatisticsStatus firstAvailable(Query query, Value& value) const;

    std::vector<std::unique_ptr<VideoCardStatistics>> sources_;
};

} // namespace vexil::module::video_card
