#include "module/video_card/statistics/statistics_sources.h"

#include "module/video_card/statistics/composite_statistics.h"

#include <utility>

namespace vexil::module::video_card {

namespace {

StatisticsSources sourcesOf(const StatisticsScan& scan) {
    StatisticsSources sources;
    if (scan) {
        scan(sources);
    }
    return sources;
}

std::unique_ptr<VideoCardStatistics> takeFirstMatch(StatisticsSources& sources,
                                                    const AdapterRecord& adapter) {
    for (auto& source : sources) {
        if (source && source->matches(adapter)) {
            return std::exchange(source, nullptr);
        }
    }
    return nullptr;
}

} // namespace

StatisticsSourceLists scanStatistics(const StatisticsScans& scans) {
    StatisticsSourceLists lists;
    lists.adl = sourcesOf(scans.adl);
    lists.intel = sourcesOf(scans.intel);
    lists.d3dkmt = sourcesOf(scans.d3dkmt);
    try {
        lists.nvapi = sourcesOf(scans.nvapi);
    } catch (int) {
        // No NVIDIA driver: the machine has no such source.
    }
    return lists;
}

std::unique_ptr<VideoCardStatistics> takeSources(StatisticsSourceLists& lists, const AdapterRecord& adapter) {
    StatisticsSources taken;
    for (auto* list : {&lists.adl, &lists.nvapi, &lists.intel, &lists.d3dkmt}) {
        taken.push_back(takeFirstMatch(*list, adapter));
    }
    return std::make_unique<CompositeVideCardStatistics>(std::move(taken));
}

} // namespace vexil::module::video_card
