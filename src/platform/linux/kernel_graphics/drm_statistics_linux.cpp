#include "platform/linux/kernel_graphics/drm_statistics.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <system_error>
#include <utility>

namespace vexil::platform {

namespace fs = std::filesystem;

namespace {

std::string text(const PciAddress& address) {
    char buffer[64];
    std::snprintf(buffer, sizeof(buffer), "%04x:%02x:%02x.%x", address.domain, address.bus, address.device,
                  address.function);
    return buffer;
}

/// In units of 100 nanoseconds.
constexpr std::int64_t longestRound = 50'000;

std::uint64_t key(const d3dkmt::Luid& luid) {
    return std::uint64_t{static_cast<std::uint32_t>(luid.highPart)} << 32 | luid.lowPart;
}

} // namespace

DrmCard::DrmCard(const PciAddress& address, const fs::path& sysRoot) : address_(text(address)) {
    const auto folder = sysRoot / "bus/pci/devices" / address_;
    std::error_code error;
    if (fs::exists(folder / "gpu_busy_percent", error)) {
        busyFile_ = folder / "gpu_busy_percent";
        nodes_.emplace_back();
    }
    const auto engines = enginesOfDriver(fs::read_symlink(folder / "driver", error).filename().string());
    knownDriver_ = !engines.empty();
    nodes_.insert(nodes_.end(), engines.begin(), engines.end());
    asked_.resize(nodes_.size());
}

void DrmCard::sample(DrmClients& clients, std::int64_t now) {
    const auto elapsed = now - std::exchange(lastSample_, now);
    double percent = 0;
    std::ifstream busy(busyFile_);
    // The counter tells only this moment, which then stands for the time since the last one.
    if (std::exchange(sampled_, true) && busy >> percent) {
        busyTime_ += std::clamp(percent, 0.0, 100.0) / 100.0 * static_cast<double>(elapsed);
    }
    engines_.update(clients.read(address_), now);
    if (!knownDriver_ && !std::exchange(knownDriver_, true)) {
        const auto found = engines_.engines();
        nodes_.insert(nodes_.end(), found.begin(), found.end());
    }
    asked_.assign(nodes_.size(), false);
}

std::int64_t DrmCard::runningTime(std::uint32_t node) const {
    return nodes_[node].empty() ? static_cast<std::int64_t>(busyTime_) : engines_.runningTime(nodes_[node]);
}

DrmStatistics::DrmStatistics(fs::path sysRoot, fs::path procRoot, Clock clock)
    : sysRoot_(std::move(sysRoot)), clients_(std::move(procRoot)), clock_(std::move(clock)) {}

void DrmStatistics::addAdapter(const d3dkmt::Luid& luid, const PciAddress& address) {
    cards_.try_emplace(key(luid), address, sysRoot_);
}

d3dkmt::Status DrmStatistics::answerNode(DrmCard& card, d3dkmt::QueryStatistics& query) {
    const auto node = query.query.nodeId;
    if (node >= card.nodeCount()) {
        return d3dkmt::invalidParameter;
    }
    // One sample serves each node once, so a caller that goes round the nodes reads the files once a round. A
    // sample of long ago would put its own time into the caller's window.
    const auto now = clock_();
    if (card.asked(node) || now - card.sampledAt() > longestRound) {
        card.sample(clients_, now);
    }
    card.setAsked(node);
    query.queryResult.nodeInformation = {card.runningTime(node), 0};
    return d3dkmt::success;
}

d3dkmt::Status DrmStatistics::answer(d3dkmt::QueryStatistics& query) {
    const auto found = cards_.find(key(query.adapterLuid));
    if (found == cards_.end()) {
        return d3dkmt::invalidParameter;
    }
    auto& card = found->second;
    std::memset(&query.queryResult, 0, sizeof(query.queryResult));
    switch (query.type) {
    case d3dkmt::QueryStatisticsType::Adapter:
        card.sample(clients_, clock_());
        query.queryResult.adapterInformation.nodeCount = card.nodeCount();
        return d3dkmt::success;
    case d3dkmt::QueryStatisticsType::Node:
        return answerNode(card, query);
    }
    return d3dkmt::invalidParameter;
}

} // namespace vexil::platform
