#pragma once

#include "platform/kernel_graphics.h"
#include "platform/linux/kernel_graphics/adapter_luids.h"
#include "platform/linux/kernel_graphics/drm_clients.h"
#include "platform/linux/kernel_graphics/engine_times.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vexil::platform {

/// One card's engines as nodes: those that the driver tells of by client, and before them the whole card
/// where the driver has a busy counter for it.
class DrmCard {
public:
    DrmCard(const PciAddress& address, const std::filesystem::path& sysRoot);

    /// Takes the state of the card, `now` in units of 100 nanoseconds.
    void sample(DrmClients& clients, std::int64_t now);
    [[nodiscard]] std::int64_t sampledAt() const { return lastSample_; }
    /// Whether the last sample has served that node already.
    [[nodiscard]] bool asked(std::uint32_t node) const { return asked_[node]; }
    void setAsked(std::uint32_t node) { asked_[node] = true; }

    [[nodiscard]] std::uint32_t nodeCount() const { return static_cast<std::uint32_t>(nodes_.size()); }
    /// In units of 100 nanoseconds.
    [[nodiscard]] std::int64_t runningTime(std::uint32_t node) const;

private:
    std::string address_;
    std::filesystem::path busyFile_;
    std::vector<std::string> nodes_; ///< names of engines; an empty one is the whole card
    std::vector<bool> asked_;
    EngineTimes engines_;
    double busyTime_ = 0;
    std::int64_t lastSample_ = 0;
    bool sampled_ = false;
    bool knownDriver_ = false;
};

/// Answers the kernel-mode statistics queries of Windows from the files of the Linux kernel.
class DrmStatistics {
public:
    using Clock = std::function<std::int64_t()>; ///< monotonic, in units of 100 nanoseconds

    DrmStatistics(std::filesystem::path sysRoot, std::filesystem::path procRoot, Clock clock);

    /// From now on that LUID means the card at that address.
    void addAdapter(const d3dkmt::Luid& luid, const PciAddress& address);
    [[nodiscard]] d3dkmt::Status answer(d3dkmt::QueryStatistics& query);

private:
    d3dkmt::Status answerNode(DrmCard& card, d3dkmt::QueryStatistics& query);

    std::filesystem::path sysRoot_;
    DrmClients clients_;
    Clock clock_;
    std::map<std::uint64_t, DrmCard> cards_;
};

} // namespace vexil::platform
