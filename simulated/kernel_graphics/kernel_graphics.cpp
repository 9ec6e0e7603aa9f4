#include "platform/kernel_graphics.h"

#include "core/shared_api.h"
#include "platform/wide_text.h"
#include "simulated/scenario/scenario.h"

// The kernel-mode graphics library of a simulated machine.
namespace {

using namespace vexil::platform;

d3dkmt::Status open(d3dkmt::OpenAdapterFromDeviceName& request) {
    const auto file = vexil::simulated::scenarioFileOfProcess();
    if (!file || request.deviceName == nullptr) {
        return d3dkmt::invalidParameter;
    }
    const auto path = toUtf8(request.deviceName);
    const auto scenario = vexil::simulated::loadScenario(*file);
    for (const auto& card : scenario.cards) {
        if (card.hasInterface && card.devicePath() == path) {
            request.adapter = static_cast<std::uint32_t>(card.luid);
            request.adapterLuid = {static_cast<std::uint32_t>(card.luid),
                                   static_cast<std::int32_t>(card.luid >> 32)};
            return d3dkmt::success;
        }
    }
    return d3dkmt::invalidParameter;
}

} // namespace

extern "C" {

VEXIL_SHARED_API d3dkmt::Status D3DKMTOpenAdapterFromDeviceName(d3dkmt::OpenAdapterFromDeviceName* request) {
    try {
        return request == nullptr ? d3dkmt::invalidParameter : open(*request);
    } catch (const vexil::simulated::ScenarioError&) {
        return d3dkmt::invalidParameter;
    }
}

VEXIL_SHARED_API d3dkmt::Status D3DKMTCloseAdapter(const d3dkmt::CloseAdapter*) { return d3dkmt::success; }
}
