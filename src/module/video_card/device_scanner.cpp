#include "module/video_card/device_scanner.h"

#include "module/video_card/device.h"
#include "module/video_card/machine.h"
#include "module/video_card/vocabulary.h"

#include <algorithm>

namespace vexil::module::video_card {

namespace {

void attachDirect3D(Device& device, const std::vector<Dx11Context>& contexts) {
    const auto found = std::ranges::find_if(contexts, [&](const Dx11Context& context) {
        return matchesCard(context, device.adapter().adapterLuids);
    });
    if (found != contexts.end()) {
        device.setDirect3D(*found);
        device.addDirect3DRows();
    }
}

void attachCuda(Device& device, const std::vector<CudaDeviceRecord>& records) {
    const auto found = std::ranges::find(records, device.adapter().location, &CudaDeviceRecord::pciBusId);
    if (found != records.end()) {
        device.setCuda(*found);
    }
}

bool isIntel(const std::shared_ptr<Device>& device) {
    return device->displayName().find(vocabulary::intel) != std::string::npos;
}

core::DeviceRecord describe(const Device& device) {
    core::DeviceRecord record;
    record.id = device.id();
    record.udi = device.udi();
    record.name = device.displayName();
    record.properties = device.properties();
    record.rows = device.rows();
    record.notices = device.notices();
    record.present = device.isPresent();
    return record;
}

} // namespace

DeviceScanner::DeviceScanner(Machine& machine) : machine_(machine) {
    systemList_.devices = machine_.acquireDeviceList();
    try {
        systemList_.kernelGraphics = machine_.loadKernelGraphics();
    } catch (...) {
        machine_.releaseDeviceList(); // No destructor runs for a scanner that was never made.
        throw;
    }
}

DeviceScanner::~DeviceScanner() {
    if (systemList_.kernelGraphics != nullptr) {
        machine_.unloadKernelGraphics(systemList_.kernelGraphics);
    }
    machine_.releaseDeviceList();
}

void DeviceScanner::scan(std::shared_ptr<core::DeviceScanListener> listener) {
    devices_.clear();
    const auto adapters = listAdapters(machine_, systemList_);
    const auto contexts = machine_.direct3dContexts();
    const auto cudaDevices = machine_.cudaDevices();
    auto statistics = scanStatistics(machine_.statisticsScans(adapters));

    const DeviceServices services{machine_.strings(), machine_.numbers(), machine_.cudaDriverVersion()};
    for (const auto& adapter : adapters) {
        auto device = std::make_shared<Device>(adapter, services);
        attachDirect3D(*device, contexts);
        attachCuda(*device, cudaDevices);
        device->setStatistics(takeSources(statistics, adapter));
        devices_.push_back(std::move(device));
    }
    // The cards in the machine come before the graphics in the processor. The order inside each half is not
    // kept.
    std::partition(devices_.begin(), devices_.end(), [](const auto& device) { return !isIntel(device); });

    for (const auto& device : devices_) {
        listener->deviceFound(describe(*device));
    }
    listener->scanFinished();
}

void DeviceScanner::checkPresence(std::shared_ptr<core::DeviceScanListener> listener) {
    listener->presenceChecked(anyDisplayDevice(machine_, systemList_));
}

std::weak_ptr<core::Device> DeviceScanner::findDevice(std::string id) const {
    const auto found = std::ranges::find_if(
        devices_, [&](const std::shared_ptr<Device>& device) { return device->id() == id; });
    return found == devices_.end() ? std::weak_ptr<core::Device>() : *found;
}

std::vector<std::weak_ptr<core::Device>> DeviceScanner::devices() const {
    return {devices_.begin(), devices_.end()};
}

} // namespace vexil::module::video_card
