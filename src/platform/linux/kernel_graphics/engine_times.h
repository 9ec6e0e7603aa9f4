#pragma once

#include "platform/linux/kernel_graphics/drm_fdinfo.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::platform {

/// The kinds of engine that a driver tells of; empty for a driver that is not known.
[[nodiscard]] std::vector<std::string> enginesOfDriver(std::string_view driver);

/// How long each kind of engine of a card has run, summed over the clients that come and go. It never runs
/// backwards: what a client did before it ended stays in the sum. Times are in units of 100 nanoseconds.
class EngineTimes {
public:
    /// `now` is a monotonic time; drivers that tell cycles are turned into time by what passed of it. A
    /// client that was not there at the last update counts with all of its work, unless it did more than fits
    /// into the time since: then it is an old one that was found late, and counts from here on.
    void update(const std::vector<DrmFdInfo>& clients, std::int64_t now);
    /// 0 for an engine that nobody has used yet.
    [[nodiscard]] std::int64_t runningTime(const std::string& engine) const;
    [[nodiscard]] std::vector<std::string> engines() const;

private:
    using Uses = std::map<std::string, EngineUse, std::less<>>;

    void add(const std::string& engine, const EngineUse& use, const EngineUse* last, std::int64_t elapsed);
    void addClient(const Uses& uses, const Uses* last, std::int64_t elapsed);

    std::map<std::uint64_t, Uses> clients_; ///< at the last update, by client id
    std::map<std::string, double, std::less<>> times_;
    std::int64_t lastUpdate_ = 0;
    bool updated_ = false;
};

} // namespace vexil::platform
