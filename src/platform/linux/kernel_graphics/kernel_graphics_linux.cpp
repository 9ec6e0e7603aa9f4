#include "core/shared_api.h"
#include "platform/linux/kernel_graphics/drm_statistics.h"
#include "platform/linux/kernel_graphics/known_adapters.h"
#include "platform/linux/system_roots.h"
#include "platform/performance_counter.h"
#include "platform/wide_text.h"

#include <exception>
#include <mutex>
#include <optional>

// Linux has no kernel-mode graphics interface of Windows' kind. This library answers its functions from what
// the Vulkan driver and the kernel's files tell of the adapters, so that the module finds and watches its
// cards in the same way on both homes.
namespace {

using namespace vexil::platform;

std::mutex mutex;

DrmStatistics& statistics() {
    static DrmStatistics instance(sysfsRoot(), procfsRoot(), performanceCounter);
    return instance;
}

d3dkmt::Status open(d3dkmt::OpenAdapterFromDeviceName& request) {
    static KnownAdapters adapters;
    const auto address = pciAddressOfPath(toUtf8(request.deviceName));
    const std::lock_guard lock(mutex);
    const auto luid = address ? adapters.luidOf(*address) : std::nullopt;
    if (!luid) {
        return d3dkmt::invalidParameter;
    }
    request.adapter = luid->lowPart;
    request.adapterLuid = *luid;
    statistics().addAdapter(*luid, *address);
    return d3dkmt::success;
}

d3dkmt::Status query(d3dkmt::QueryStatistics& request) {
    const std::lock_guard lock(mutex);
    return statistics().answer(request);
}

} // namespace

// No memory, or a file system that fails: nothing may be thrown across these plain functions.
extern "C" {

VEXIL_SHARED_API d3dkmt::Status D3DKMTOpenAdapterFromDeviceName(d3dkmt::OpenAdapterFromDeviceName* request) {
    try {
        return request == nullptr || request->deviceName == nullptr ? d3dkmt::invalidParameter
                                                                    : open(*request);
    } catch (const std::exception&) {
        return d3dkmt::invalidParameter;
    }
}

VEXIL_SHARED_API d3dkmt::Status D3DKMTQueryStatistics(d3dkmt::QueryStatistics* request) {
    try {
        return request == nullptr ? d3dkmt::invalidParameter : query(*request);
    } catch (const std::exception&) {
        return d3dkmt::invalidParameter;
    }
}

VEXIL_SHARED_API d3dkmt::Status D3DKMTCloseAdapter(const d3dkmt::CloseAdapter*) { return d3dkmt::success; }
}
