#pragma once

#include "module/video_card/statistics/video_card_statistics.h"

#include <functional>
#include <memory>
#include <vector>

namespace vexil::module::video_card {

using StatisticsSources = std::vector<std::unique_ptr<VideoCardStatistics>>;

/// The discovery of one kind of source.
class VideoCardStatisticsScanner {
public:
    virtual ~VideoCardStatisticsScanner() = default;
    // Two slots that the suite's interface has and nobody calls.
    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
    /// Fills `sources`, which is also the result. A source that cannot be built is left out.
    virtual StatisticsSources& scan(StatisticsSources& sources) = 0;
};

/// What a scan of all kinds found. The order of the lists is the order in which a card's sources are asked.
struct StatisticsSourceLists {
    StatisticsSources adl;
    StatisticsSources nvapi;
    StatisticsSources intel;
    StatisticsSources d3dkmt;
};

/// Fills a list with the sources of one kind.
using StatisticsScan = std::function<void(StatisticsSources& sources)>;

/// One scan for each kind; an empty function is a kind that this build does not have.
struct StatisticsScans {
    StatisticsScan adl;
    StatisticsScan intel;
    StatisticsScan d3dkmt;
    StatisticsScan nvapi; ///< throws a plain integer, the NVAPI status, where NVAPI cannot be initialised
};

/// Runs the scans in the order ADL, Intel, D3DKMT, NVAPI. NVAPI's integer is caught and leaves its list
/// empty; any other exception leaves this function and ends the device scan.
[[nodiscard]] StatisticsSourceLists scanStatistics(const StatisticsScans& scans);

/// Takes the first source of each list that matches the adapter out of it, leaving an empty entry there, and
/// makes the card's composite of the four, empty ones included.
[[nodiscard]] std::unique_ptr<VideoCardStatistics> takeSources(StatisticsSourceLists& lists,
                                                               const AdapterRecord& adapter);

} // namespace vexil::module::video_card
