#include "module/cpu/temperature_monitor.h"

#include "module/cpu/cpu_machine.h"
#include "module/cpu/temperature_amd.h"
#include "module/cpu/temperature_intel.h"

#include <stdexcept>

namespace vexil::module::cpu {

namespace {

std::unique_ptr<AbstractCpuTemperature> makeTemperature(CpuMachine& machine) {
    const auto vendor = platform::processorVendor(machine.cpuid(0));
    const bool isIntel = vendor == "GenuineIntel";
    if (!isIntel && vendor != "AuthenticAMD") {
        throw std::runtime_error(
            "Failed to initialize the TemperatureMonitor object because the CPU vendor is unknown.");
    }
    auto service = std::make_shared<VXKServiceInterface>(machine);
    // The suite's module for processors lists them; this one has no need of single cores.
    auto processors = std::make_shared<const LogicalProcessors>();
    if (isIntel) {
        return std::make_unique<TemperatureIntel>(std::move(service), std::move(processors));
    }
    return std::make_unique<TemperatureAmd>(std::move(service), std::move(processors), machine);
}

} // namespace

TemperatureMonitor::TemperatureMonitor() : TemperatureMonitor(systemCpuMachine()) {}

TemperatureMonitor::TemperatureMonitor(CpuMachine& machine) : temperature_(makeTemperature(machine)) {}

std::int32_t TemperatureMonitor::getPackageTemperature(double& celsius) {
    return temperature_->getPackageTemperature(celsius);
}

} // namespace vexil::module::cpu
