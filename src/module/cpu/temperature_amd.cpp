#include "module/cpu/temperature_amd.h"

#include "module/cpu/amd_processor.h"

#include <utility>

namespace vexil::module::cpu {

namespace {

TemperatureAmd::Reader chooseReader(CpuMachine& machine) {
    const auto cim = machine.makeCim();
    const auto read = readerFor(lookUpAmdProcessor(*cim));
    return [read](const std::shared_ptr<VXKServiceInterface>& service, double& celsius) {
        return read(*service, celsius);
    };
}

} // namespace

TemperatureAmd::TemperatureAmd(std::shared_ptr<VXKServiceInterface> service,
                               std::shared_ptr<const LogicalProcessors> processors, CpuMachine& machine)
    : service_(std::move(service)), processors_(std::move(processors)), reader_(chooseReader(machine)) {}

std::int32_t TemperatureAmd::getPackageTemperature(double& celsius) { return reader_(service_, celsius); }

std::int32_t TemperatureAmd::getCoreTemperatures(std::map<std::int32_t, double>& celsius) {
    return reader_(service_, celsius[0]);
}

} // namespace vexil::module::cpu
