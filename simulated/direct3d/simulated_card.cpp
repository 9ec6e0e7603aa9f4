#include "simulated/direct3d/simulated_card.h"

#include "platform/wide_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vexil::simulated {

HRESULT FailingCalls::admit(const std::string& call) {
    const std::lock_guard lock(mutex_);
    const auto time = ++times_[call];
    for (const auto& fault : section_->faults) {
        if (fault.kind == Direct3DFault::Kind::failingCall && fault.call == call && time >= fault.number) {
            return static_cast<HRESULT>(fault.result);
        }
    }
    return S_OK;
}

bool FailingCalls::isLost(const std::string& call) {
    const auto losesIt = [&](const Direct3DFault& fault) {
        return fault.kind == Direct3DFault::Kind::lostCall && fault.call == call;
    };
    if (std::ranges::none_of(section_->faults, losesIt)) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    const auto time = ++times_[call];
    return std::ranges::any_of(section_->faults,
                               [&](const auto& fault) { return losesIt(fault) && fault.number == time; });
}

SimulatedCard::SimulatedCard(Direct3DIdentity identity, Direct3DSection section, std::shared_ptr<CallLog> log)
    : identity_(std::move(identity)), section_(std::move(section)), log_(std::move(log)),
      failingCalls_(section_) {}

DXGI_ADAPTER_DESC SimulatedCard::adapterDescription() const {
    DXGI_ADAPTER_DESC desc{};
    const auto& text = section_.description.empty() ? identity_.name : section_.description;
    const auto wide = platform::toWide(text);
    std::copy_n(wide.begin(), std::min(wide.size(), std::size(desc.Description) - 1), desc.Description);
    desc.VendorId = identity_.vendorId;
    desc.DeviceId = identity_.deviceId;
    desc.DedicatedVideoMemory = section_.dedicatedMemory;
    desc.SharedSystemMemory = section_.sharedMemory;
    desc.AdapterLuid.LowPart = static_cast<std::uint32_t>(identity_.luid);
    desc.AdapterLuid.HighPart = static_cast<std::int32_t>(identity_.luid >> 32);
    return desc;
}

} // namespace vexil::simulated
