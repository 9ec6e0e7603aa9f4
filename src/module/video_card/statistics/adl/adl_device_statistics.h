#pragma once

#include "module/video_card/statistics/adl/adl_context.h"
#include "module/video_card/statistics/video_card_statistics.h"

#include <cstdint>
#include <string>

namespace vexil::module::video_card {

/// Total less used. The usage becomes bytes in 32 bits, carry lost, and then 64 with its sign: from 2048
/// megabytes on the figure is not the true one, and hosts rely on what this gives.
[[nodiscard]] std::uint64_t freeAdlMemory(std::uint64_t totalBytes, std::int32_t usedMegabytes);

/// Whole degrees, truncated toward zero. Written even if they are outside -50 to 200 and so unavailable.
VideoCardStatisticsStatus convertAdlTemperature(std::int32_t millidegrees, std::int64_t& celsius);

/// One AMD adapter through ADL. The load always comes from the next source of the card.
class ADLDeviceStatistics : public VideoCardStatistics {
public:
    ADLDeviceStatistics(std::int32_t adapterIndex, std::string location, ADLContexts& contexts = systemAdl());

    [[nodiscard]] bool matches(const AdapterRecord& adapter) const override;
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override = 0;
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override = 0;
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t& bytes) override;
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t& bytes) override;

protected:
    [[nodiscard]] std::int32_t adapterIndex() const { return adapterIndex_; }
    /// Asked for afresh at every step, since no source keeps the library loaded. Once it is there it stays.
    [[nodiscard]] std::shared_ptr<const ADLContext> context() const { return contexts_.get(); }

private:
    std::int32_t adapterIndex_;
    std::string location_;
    ADLContexts& contexts_;
};

/// A card of Overdrive generation 5.
class ADLOD5DeviceStatistics final : public ADLDeviceStatistics {
public:
    using ADLDeviceStatistics::ADLDeviceStatistics;
    /// Only a reading whose call reports failure is used: a card of this generation normally has none, and
    /// the next source is asked.
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override;
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override;
};

/// A card of Overdrive generation 6.
class ADLOD6DeviceStatistics final : public ADLDeviceStatistics {
public:
    using ADLDeviceStatistics::ADLDeviceStatistics;
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override;
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override;
};

/// A card of generation 7, which AMD calls OverdriveN.
class ADLDNDeviceStatistics final : public ADLDeviceStatistics {
public:
    using ADLDeviceStatistics::ADLDeviceStatistics;
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override;
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override;
};

} // namespace vexil::module::video_card
