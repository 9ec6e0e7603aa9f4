#include "module/cpu/temperature_intel.h"

#include <utility>

namespace vexil::module::cpu {

namespace {

// Intel's Software Developer's Manual, volume 4.
constexpr std::uint32_t thermalStatusRegister = 0x19C;     // IA32_THERM_STATUS
constexpr std::uint32_t temperatureTargetRegister = 0x1A2; // MSR_TEMPERATURE_TARGET
constexpr unsigned readingValidBit = 31;

std::int32_t readSensor(VXKServiceInterface& service, double& celsius) {
    std::uint64_t status = 0;
    std::uint64_t target = 0;
    if (service.readMsr(thermalStatusRegister, status) != VXKServiceInterface::succeeded ||
        service.readMsr(temperatureTargetRegister, target) != VXKServiceInterface::succeeded ||
        (status >> readingValidBit & 1) == 0) {
        return VXKServiceInterface::failed;
    }
    const std::uint64_t maximum = target >> 16 & 0xFF;
    const std::uint64_t distance = status >> 16 & 0x7F;
    celsius = static_cast<double>(maximum - distance);
    return VXKServiceInterface::succeeded;
}

} // namespace

TemperatureIntel::TemperatureIntel(std::shared_ptr<VXKServiceInterface> service,
                                   std::shared_ptr<const LogicalProcessors> processors,
                                   ThreadMaker makeThread)
    : service_(std::move(service)), processors_(std::move(processors)), makeThread_(std::move(makeThread)) {}

std::int32_t TemperatureIntel::getPackageTemperature(double& celsius) {
    return readSensor(*service_, celsius);
}

std::int32_t TemperatureIntel::getCoreTemperatures(std::map<std::int32_t, double>& celsius) {
    if (!service_->isReady()) {
        return VXKServiceInterface::failed;
    }
    for (const auto& processor : *processors_) {
        double reading = 0;
        const auto status = runPinned(
            processor, [&] { return readSensor(*service_, reading); }, makeThread_);
        if (status == VXKServiceInterface::succeeded) {
            celsius.emplace(processor.coreId, reading);
        }
    }
    return VXKServiceInterface::succeeded;
}

} // namespace vexil::module::cpu
