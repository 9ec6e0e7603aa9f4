#include "module/video_card/tool/thermal_monitor_tool.h"

#include "core/test_reporter.h"
#include "core/test_result.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/device.h"

namespace vexil::module::video_card::tool {

namespace {

constexpr std::int32_t testId = 90;
constexpr const char* unknownTemperature = "\"--\"";

} // namespace

std::int64_t toFahrenheit(std::int64_t celsius) {
    // The product of a sensor's nonsense wraps around instead of overflowing.
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(celsius) * 9) / 5 + 32;
}

std::string thermalLine(const std::string& deviceId, const std::string& deviceName,
                        std::optional<std::int64_t> celsius) {
    return "{\"deviceId\": \"" + deviceId + "\", \"deviceName\": \"" + deviceName +
           "\", \"temperatureCelsius\": " + (celsius ? std::to_string(*celsius) : unknownTemperature) +
           ", \"temperatureFahrenheit\": " +
           (celsius ? std::to_string(toFahrenheit(*celsius)) : unknownTemperature) + "}";
}

ThermalMonitorToolVideocard::ThermalMonitorToolVideocard() : Test(catalogueDescriptor(testId)) {}

std::uint8_t ThermalMonitorToolVideocard::execute(const core::TestRunArguments& arguments) {
    const auto held = arguments.device.lock();
    const auto* device = dynamic_cast<const Device*>(held.get());
    if (device == nullptr) {
        return core::TestResult::DeviceUnavailable;
    }
    // Stricter than the tests: any event stops the tool, not only those that could spoil a verdict.
    if (*arguments.cancelRequested != 0 || (arguments.systemEvents && arguments.systemEvents->read() != 0)) {
        return core::TestResult::NotCompleted;
    }
    std::int64_t celsius = 0;
    const bool known = device->getTemperature(celsius);
    const auto line =
        thermalLine(device->id(), device->displayName(), known ? std::optional(celsius) : std::nullopt);
    arguments.reporter->report({0, line});
    return known ? core::TestResult::Passed : core::TestResult::DeviceUnavailable;
}

bool ThermalMonitorToolVideocard::isSupported(core::Device* device, std::shared_ptr<core::Device>) const {
    return dynamic_cast<Device*>(device) != nullptr;
}

} // namespace vexil::module::video_card::tool
