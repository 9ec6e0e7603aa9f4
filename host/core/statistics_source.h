#pragma once

#include "host/core/live_values.h"

#include <map>
#include <memory>
#include <string>

namespace vexil::module::video_card {
class VideoCardStatistics;
}

namespace vexil::host {

/// Load and free memory, from the same vendors' interfaces that the module asks. The module tells neither to
/// its host, so the host keeps sources of its own.
class StatisticsSource final : public LiveSource {
public:
    /// Lists the adapters of the machine and finds the sources of each. To be made when the machine is in
    /// place. What the machine lacks is no error: a card without sources has no values.
    StatisticsSource();
    ~StatisticsSource() override;

    /// The first query of a card's load takes a tenth of a second; a later one tells the load since the one
    /// before it.
    void read(const Card& card, LiveValues& values) override;

private:
    /// By UDI, which holds the location of the card and so differs between two cards of one kind.
    std::map<std::string, std::unique_ptr<module::video_card::VideoCardStatistics>> cards_;
};

} // namespace vexil::host
