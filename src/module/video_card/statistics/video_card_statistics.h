#pragma once

#include <cstdint>

namespace vexil::module::video_card {

struct AdapterRecord;

/// The two values are fixed; anything but `Unavailable` counts as an answer.
enum class VideoCardStatisticsStatus : std::int32_t { Ok = 0, Unavailable = 1 };

/// One source of a card's live values. A query may write its out value even when it answers `Unavailable`, so
/// the value is read only after `Ok`.
class VideoCardStatistics {
public:
    VideoCardStatistics() = default;
    VideoCardStatistics(const VideoCardStatistics&) = delete;
    VideoCardStatistics& operator=(const VideoCardStatistics&) = delete;
    virtual ~VideoCardStatistics() = default;

    /// Whether this source describes that adapter.
    [[nodiscard]] virtual bool matches(const AdapterRecord& adapter) const = 0;
    /// Whole degrees Celsius.
    virtual VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) = 0;
    /// Load of the graphics engine in whole percent, 0 to 100.
    virtual VideoCardStatisticsStatus getUsage(std::uint64_t& percent) = 0;
    /// Video memory in bytes.
    virtual VideoCardStatisticsStatus getTotalMemory(std::uint64_t& bytes) = 0;
    /// Free video memory in bytes.
    virtual VideoCardStatisticsStatus getFreeMemory(std::uint64_t& bytes) = 0;
};

} // namespace vexil::module::video_card
