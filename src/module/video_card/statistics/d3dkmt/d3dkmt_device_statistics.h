#pragma once

#include "core/library_loader.h"
#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/d3dkmt/node_sample.h"
#include "module/video_card/statistics/d3dkmt/sample_clock.h"
#include "module/video_card/statistics/statistics_sources.h"
#include "platform/kernel_graphics.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::module::video_card {

/// One adapter as it was opened, with its engines.
struct D3DKMTAdapter {
    platform::d3dkmt::OpenAdapterFromDeviceName opened;
    std::vector<D3DKMTNodeSample> nodes;
    std::unique_ptr<const std::wstring> deviceName; ///< what `opened` points to
};

/// The load of a card's busiest engine, from the kernel's statistics: for every card with a driver. Nothing
/// else. Load is measured between two queries; the first query takes 100 milliseconds to make a window.
class D3DKMTDeviceStatistics final : public VideoCardStatistics {
public:
    /// Throws `std::runtime_error` if none of the adapter's device paths can be opened, and
    /// `std::length_error` for a count of engines that no card has. Loader and clock must outlive the object.
    D3DKMTDeviceStatistics(const AdapterRecord& adapter, ::Module& loader, SampleClock& clock);

    [[nodiscard]] bool matches(const AdapterRecord& adapter) const override;
    VideoCardStatisticsStatus getTemperature(std::int64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    /// Rounded up. One query at a time over all cards, as the samples belong to the process.
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override;
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }

private:
    void openAdapter(const std::string& path);
    void countNodes(D3DKMTAdapter& adapter);
    void sample(D3DKMTAdapter& adapter);
    VideoCardStatisticsStatus readUsage(std::uint64_t& percent);
    platform::d3dkmt::QueryStatisticsFunction queryFunction();

    ::Module& loader_;
    SampleClock& clock_;
    void* gdi32_;
    std::vector<std::string> paths_;
    std::vector<D3DKMTAdapter> adapters_;
    std::string location_;
    bool firstUsageQuery_ = true;
};

/// One source for each record that can be opened; the others are left out.
class D3DKMTDeviceStatisticsScanner final : public VideoCardStatisticsScanner {
public:
    explicit D3DKMTDeviceStatisticsScanner(std::vector<AdapterRecord> adapters);
    /// Loader and clock must outlive the sources.
    D3DKMTDeviceStatisticsScanner(std::vector<AdapterRecord> adapters, ::Module& loader, SampleClock& clock);

    void reserved1() override {}
    void reserved2() override {}
    StatisticsSources& scan(StatisticsSources& sources) override;

private:
    std::vector<AdapterRecord> adapters_;
    ::Module& loader_;
    SampleClock& clock_;
};

} // namespace vexil::module::video_card
