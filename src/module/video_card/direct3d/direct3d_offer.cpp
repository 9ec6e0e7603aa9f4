#include "module/video_card/direct3d/direct3d_offer.h"

#include "module/video_card/device.h"

namespace vexil::module::video_card {

namespace {

// Microsoft's Basic Render Driver.
constexpr UINT softwareVendor = 0x1414;
constexpr UINT softwareDevice = 0x8C;

bool isSoftware(const DXGI_ADAPTER_DESC& desc) {
    return desc.VendorId == softwareVendor && desc.DeviceId == softwareDevice;
}

template <typename Accepts>
bool asksContext(core::Device* device, const Accepts& accepts) {
    auto* const card = dynamic_cast<Device*>(device);
    if (card == nullptr) {
        return false;
    }
    const auto lock = card->lock();
    return lock.slot() && accepts(*lock.slot());
}

} // namespace

bool hasDirect3D(core::Device* device) {
    return asksContext(device, [](const Dx11Context&) { return true; });
}

bool hasHardwareDirect3D(core::Device* device) {
    return asksContext(device, [](const Dx11Context& dx11) { return !isSoftware(dx11.adapterInfo.desc); });
}

} // namespace vexil::module::video_card
