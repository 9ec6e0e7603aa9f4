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
