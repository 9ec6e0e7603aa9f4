#pragma once

#include "module/video_card/statistics/adl/adl_context.h"
#include "module/video_card/statistics/statistics_sources.h"

namespace vexil::module::video_card {

/// Finds the AMD adapters that ADL knows, by their Overdrive generation.
class ADLDeviceStatisticsScanner final : public VideoCardStatisticsScanner {
public:
    explicit ADLDeviceStatisticsScanner(ADLContexts& contexts = systemAdl()) : contexts_(contexts) {}

    void reserved1() override {}
    void reserved2() override {}
    StatisticsSources& scan(StatisticsSources& sources) override;

private:
    ADLContexts& contexts_;
};

} // namespace vexil::module::video_card
