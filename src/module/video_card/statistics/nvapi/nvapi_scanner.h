#pragma once

#include "module/video_card/statistics/nvapi/nvapi_runtime.h"
#include "module/video_card/statistics/statistics_sources.h"

namespace vexil::module::video_card {

/// Finds every GPU that NVAPI knows, and holds an NVAPI reference while it lives.
class NvapiDeviceStatisticsScanner final : public VideoCardStatisticsScanner {
public:
    /// Throws the NVAPI status as an `int` if NVAPI cannot be initialised.
    explicit NvapiDeviceStatisticsScanner(const NvapiRuntime& runtime = systemNvapi())
        : runtime_(runtime), reference_(runtime.access) {}

    void reserved1() override {}
    void reserved2() override {}
    /// A GPU that cannot tell where it is, or for which no source can be made, is left out.
    StatisticsSources& scan(StatisticsSources& sources) override;

private:
    const NvapiRuntime& runtime_;
    NvapiReference reference_;
};

} // namespace vexil::module::video_card
