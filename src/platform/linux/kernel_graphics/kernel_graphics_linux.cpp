#include "core/shared_api.h"
#include "platform/linux/kernel_graphics/adapter_luids.h"
#include "platform/wide_text.h"

#include <algorithm>

// Linux has no kernel-mode graphics interface of Windows' kind. This library answers its functions from what
// the Vulkan driver tells of the adapters, so that the module finds its cards in the same way on both homes.
namespace {

using namespace vexil::platform;

d3dkmt::Status open(d3dkmt::OpenAdapterFromDeviceName& request) {
    const auto address = pciAddressOfPath(toUtf8(request.deviceName));
    if (!address) {
        return d3dkmt::invalidParameter;
    }
    const auto luids = listAdapterLuids();
    const auto found = std::ranges::find(luids, *address, &AdapterLuid::address);
    if (found == luids.end()) {
        return d3dkmt::invalidParameter;
    }
    request.adapter = found->luid.lowPart;
    request.adapterLuid = found->luid;
    return d3dkmt::success;
}

} // namespace

extern "C" {

VEXIL_SHARED_API d3dkmt::Status D3DKMTOpenAdapterFromDeviceName(d3dkmt::OpenAdapterFromDeviceName* request) {
    return request == nullptr || request->deviceName == nullptr ? d3dkmt::invalidParameter : open(*request);
}

VEXIL_SHARED_API d3dkmt::Status D3DKMTCloseAdapter(const d3dkmt::CloseAdapter*) { return d3dkmt::success; }
}
