#include "device_source.h"
#include "simulated/scenario/scenario.h"

namespace vexil::sal {

namespace {

SystemDevice describe(const simulated::ScenarioCard& card, bool withPath) {
    const auto ids = "PCI\\VEN_" + card.vendorId + "&DEV_" + card.deviceId;
    SystemDevice device;
    device.description = card.name;
    device.hardwareIds = {ids + "&REV_00", ids};
    device.compatibleIds = {"PCI\\VEN_" + card.vendorId + "&CC_030000", "PCI\\CC_030000", "PCI\\CC_0300"};
    device.manufacturer = card.manufacturer;
    device.locationInformation = card.locationInformation();
    if (withPath) {
        device.interfacePaths = {card.devicePath()};
    }
    return device;
}

class ScenarioDeviceSource final : public DeviceSource {
public:
    explicit ScenarioDeviceSource(const std::string& file) : scenario_(simulated::loadScenario(file)) {}

    std::vector<SystemDevice> list(const WinDeviceScanFilter& filter) override {
        std::vector<SystemDevice> devices;
        for (const auto& card : scenario_.cards) {
            if (card.hasInterface || !asksForInterface(filter)) {
                devices.push_back(describe(card, asksForInterface(filter)));
            }
        }
        return devices;
    }

private:
    simulated::Scenario scenario_;
};

} // namespace

std::unique_ptr<DeviceSource> makeScenarioDeviceSource(const std::string& file) {
    return std::make_unique<ScenarioDeviceSource>(file);
}

} // namespace vexil::sal
