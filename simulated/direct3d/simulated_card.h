#pragma once

#include "simulated/direct3d/call_log.h"
#include "simulated/scenario/direct3d_section.h"

#include <dxgi.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace vexil::simulated {

/// The identity of a simulated adapter, beside what its section says.
struct Direct3DIdentity {
    std::string name; ///< UTF-8; the description, where the section has none
    std::uint32_t vendorId = 0;
    std::uint32_t deviceId = 0;
    std::uint64_t luid = 0; ///< high word in the upper half
};

/// Counts the calls of each name, and tells which of them a fault of the section names.
class FailingCalls {
public:
    explicit FailingCalls(const Direct3DSection& section) : section_(&section) {}
    /// S_OK, or the failure that the call is to return without being made.
    [[nodiscard]] HRESULT admit(const std::string& call);
    /// Likewise of calls without a result: whether a `lostCall` of the section swallows it.
    [[nodiscard]] bool isLost(const std::string& call);

private:
    const Direct3DSection* section_;
    std::mutex mutex_;
    std::map<std::string, std::uint32_t> times_;
};

/// What all devices of one simulated card share.
class SimulatedCard {
public:
    SimulatedCard(Direct3DIdentity identity, Direct3DSection section, std::shared_ptr<CallLog> log = nullptr);
    SimulatedCard(const SimulatedCard&) = delete;
    SimulatedCard& operator=(const SimulatedCard&) = delete;

    [[nodiscard]] DXGI_ADAPTER_DESC adapterDescription() const;
    [[nodiscard]] const Direct3DSection& section() const { return section_; }
    /// Null where nobody listens.
    [[nodiscard]] const std::shared_ptr<CallLog>& log() const { return log_; }
    /// Of the calls that belong to the card and not to one of its devices.
    [[nodiscard]] FailingCalls& failingCalls() { return failingCalls_; }

    /// The bytes that the resources of the card take at present.
    std::atomic<std::uint64_t> usedMemory = 0;

private:
    Direct3DIdentity identity_;
    Direct3DSection section_;
    std::shared_ptr<CallLog> log_;
    FailingCalls failingCalls_;
};

} // namespace vexil::simulated
