#include "device_list.h"

#include <exception>

namespace vexil::sal {

namespace {

// Property ids of the Windows setup API.
constexpr std::uint32_t descriptionId = 0;
constexpr std::uint32_t hardwareIdsId = 1;
constexpr std::uint32_t compatibleIdsId = 2;
constexpr std::uint32_t manufacturerId = 11;
constexpr std::uint32_t locationInformationId = 13;

/// Each text with its NUL, and one more NUL at the end of all.
std::string sequence(const std::vector<std::string>& texts) {
    std::string result;
    for (const auto& text : texts) {
        result.append(text).push_back('\0');
    }
    result.push_back('\0');
    return result;
}

} // namespace

bool asksForInterface(const WinDeviceScanFilter& filter) { return filter.interfaceGuid != DeviceGuid(); }

std::int32_t DeviceList::scan(const DeviceScanFilter& filter, InterfacePaths& paths) {
    const auto* restriction = dynamic_cast<const WinDeviceScanFilter*>(&filter);
    try {
        const auto devices = source_->list(restriction == nullptr ? WinDeviceScanFilter() : *restriction);
        properties_.clear();
        paths.clear();
        for (const auto& device : devices) {
            const auto index = count();
            Properties properties;
            const auto set = [&](std::uint32_t id, const std::string& text) {
                if (!text.empty()) {
                    properties[id] = text;
                }
            };
            set(descriptionId, device.description);
            set(manufacturerId, device.manufacturer);
            set(locationInformationId, device.locationInformation);
            properties[hardwareIdsId] = sequence(device.hardwareIds);
            properties[compatibleIdsId] = sequence(device.compatibleIds);
            properties_.push_back(std::move(properties));
            paths[index] = device.interfacePaths;
        }
        return success;
    } catch (const std::exception&) {
        return failure;
    }
}

std::int32_t DeviceList::property(std::uint32_t index, std::uint32_t propertyId, const char*& text) {
    if (index >= count()) {
        return failure;
    }
    const auto found = properties_[index].find(propertyId);
    if (found == properties_[index].end()) {
        return failure;
    }
    text = found->second.c_str();
    return success;
}

} // namespace vexil::sal
