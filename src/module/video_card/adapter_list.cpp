#include "module/video_card/adapter_list.h"

#include "core/sal.h"
#include "module/video_card/adapter_properties.h"
#include "module/video_card/machine.h"

#include <algorithm>

namespace vexil::module::video_card {

namespace {

// {1CA05180-A699-450A-9A0C-DE4FBE3DDD89}: the device interface of display adapters.
constexpr DeviceGuid displayAdapterInterface = {
    0x1CA05180, 0xA699, 0x450A, {0x9A, 0x0C, 0xDE, 0x4F, 0xBE, 0x3D, 0xDD, 0x89}};
// {4D36E968-E325-11CE-BFC1-08002BE10318}: the setup class of display adapters.
constexpr DeviceGuid displayClass = {
    0x4D36E968, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

void readRecord(Machine& machine, const SystemList& list, const AdapterProperties& properties,
                const std::vector<std::string>& paths, std::uint32_t index,
                std::vector<AdapterRecord>& records) {
    if (!properties.isDisplayController(index)) {
        return;
    }
    auto location = properties.location(index);
    auto ids = properties.hardwareIds(index);
    if (!location || !ids) {
        return;
    }
    AdapterRecord record;
    record.location = std::move(*location);
    record.vendorId = std::move(ids->vendorId);
    record.deviceId = std::move(ids->deviceId);
    record.name = properties.description(index);
    record.manufacturer = properties.manufacturer(index);
    record.driverVersion = driverVersionFor(machine, record.manufacturer);
    record.devicePaths = paths;
    for (const auto& path : paths) {
        record.adapterLuids.push_back(machine.adapterLuid(list.kernelGraphics, path));
    }
    records.push_back(std::move(record));
}

std::vector<AdapterRecord> readPass(Machine& machine, const SystemList& list,
                                    const WinDeviceScanFilter& filter) {
    std::vector<AdapterRecord> records;
    SystemDeviceList::InterfacePaths paths;
    if (list.devices->scan(filter, paths) != 0) {
        return records;
    }
    const AdapterProperties properties(*list.devices, machine.numbers());
    const auto count = list.devices->count();
    for (std::uint32_t index = 0; index < count; ++index) {
        readRecord(machine, list, properties, paths[index], index, records);
    }
    return records;
}

} // namespace

std::vector<AdapterRecord> listAdapters(Machine& machine, const SystemList& list) {
    // The first pass alone knows interface paths, the second alone knows every controller.
    const auto withInterface = readPass(machine, list, {displayAdapterInterface, displayClass});
    auto records = readPass(machine, list, {});
    for (const auto& known : withInterface) {
        const auto partner = std::ranges::find(records, known.location, &AdapterRecord::location);
        if (partner != records.end()) {
            partner->adapterLuids = known.adapterLuids;
            partner->devicePaths = known.devicePaths;
        }
    }
    return records;
}

bool anyDisplayDevice(Machine& machine, const SystemList& list) {
    SystemDeviceList::InterfacePaths paths;
    if (list.devices->scan(WinDeviceScanFilter(), paths) != 0) {
        return false;
    }
    const AdapterProperties properties(*list.devices, machine.numbers());
    const auto count = list.devices->count();
    for (std::uint32_t index = 0; index < count; ++index) {
        if (properties.isDisplayController(index) && properties.location(index) &&
            properties.hardwareIds(index)) {
            return true;
        }
    }
    return false;
}

std::string driverVersionFor(Machine& machine, const std::string& manufacturer) {
    constexpr const char* property = "DriverVersion";
    constexpr const char* className = "Win32_PnPSignedDriver";
    std::string version;
    if (machine.queryCim(property, "DriverProviderName = '" + manufacturer + "'", className, version) &&
        !version.empty()) {
        return version;
    }
    version.clear();
    return machine.queryCim(property, "DeviceClass = 'DISPLAY'", className, version) ? version
                                                                                     : std::string();
}

} // namespace vexil::module::video_card
